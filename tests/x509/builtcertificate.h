// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/derelement.h"

#include <QByteArray>
#include <QList>

/// Certificates put together octet by octet, for contents that no program would write. Their
/// signatures are none.
namespace TrivexTest {

inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

/// The content of an OBJECT IDENTIFIER of these arcs, each of 63 bits at most.
QByteArray oidContent(const QList<quint64> &arcs);
inline QByteArray oidElement(const QByteArray &content)
{
    return derElement(0x06, content);
}

/// An AttributeTypeAndValue; the identifier by its content.
QByteArray attribute(const QByteArray &oid, const QByteArray &value, int tag = 0x0C);
/// A Name of `count` sets that hold `attribute`.
QByteArray name(const QByteArray &attribute, int count = 1);
QByteArray commonName(const QByteArray &text, int tag = 0x0C);

QByteArray extension(const QByteArray &oid, const QByteArray &value, bool isCritical = false);

struct Parts {
    QByteArray version = derElement(0xA0, derElement(0x02, "\x02"));
    QByteArray serial = "\x05";
    QByteArray issuer = commonName("Issuer");
    QByteArray validity = derElement(0x17, "200101000000Z") + derElement(0x17, "491231235959Z");
    QByteArray subject = commonName("Subject");
    QByteArray key; ///< SubjectPublicKeyInfo; empty for one of RSA that is none
    QByteArray extensions;
    QByteArray algorithm = derElement(0x30, derElement(0x06, hex("2a864886f70d01010b")));
};
QByteArray certificate(const Parts &parts);

/// An empty revocation list.
QByteArray revocationList(const QByteArray &issuer);

} // namespace TrivexTest
