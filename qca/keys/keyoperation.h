// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/handles.h"

#include <QByteArray>
#include <QtCrypto>

namespace Trivex {

/// libcrypto's name of the digest in `algorithm`, such as "SHA256"; empty for `EMSA3_Raw` and for
/// unknown numbers. Takes an int, because 11 to 15 are ours and not QCA's.
TRIVEX_QCA_EXPORT QByteArray digestOf(int algorithm);

/// DER DigestInfo (RFC 8017, 9.2) around `digest`; empty for a digest without an OID.
TRIVEX_QCA_EXPORT QByteArray digestInfo(const QByteArray &digestName, const QByteArray &digest);

/// The digest of `message`; empty for a digest that libcrypto does not have.
TRIVEX_QCA_EXPORT QByteArray digestOfMessage(const QByteArray &digestName,
                                             const QByteArray &message);

/// The data of a running signature or verification: digested as it comes, or collected if the
/// algorithm needs it whole.
class TRIVEX_QCA_EXPORT KeyOperation {
public:
    enum Mode { Idle, Signing, Verifying };

    KeyOperation() = default;
    /// A copy goes on from where the original is: QCA copies a context when its key is shared.
    KeyOperation(const KeyOperation &other);
    KeyOperation &operator=(const KeyOperation &) = delete;

    /// Collects the data when `digestName` is empty. An unknown digest makes the operation fail.
    void start(Mode mode, const QByteArray &digestName, QCA::SignatureFormat format);
    void fail();
    void update(const QCA::MemoryRegion &data);
    /// Ends the operation and gives the digest or the collected data. False when it failed or was
    /// never started in that mode.
    bool finish(Mode mode, QByteArray *data);

    // These describe the operation that runs or has ended last.
    QByteArray digestName() const { return m_digestName; }
    QCA::SignatureFormat format() const { return m_format; }
    Mode mode() const { return m_mode; }

private:
    Mode m_mode = Idle;
    bool m_failed = false;
    QCA::SignatureFormat m_format = QCA::DefaultFormat;
    QByteArray m_digestName;
    QByteArray m_collected;
    DigestContextHandle m_digest;
};

} // namespace Trivex
