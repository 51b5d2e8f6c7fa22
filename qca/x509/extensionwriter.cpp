// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/extensions.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/extensionids.h"
#include "qca/x509/names.h"

namespace Trivex {

namespace {

constexpr int KeyUsageBits = 9;

QByteArray extension(const char *oid, bool critical, const QByteArray &value)
{
    QList<QByteArray> parts = {Der::writeOid(oid)};
    if (critical)
        parts += Der::write(Der::Boolean, QByteArray(1, '\xFF'));
    return Der::writeSequence(parts << Der::write(Der::OctetString, value));
}

QByteArray basicConstraints(const QCA::CertificateOptions &options)
{
    QList<QByteArray> parts;
    if (options.isCA())
        parts += Der::write(Der::Boolean, QByteArray(1, '\xFF'));
    if (options.isCA() && options.pathLimit() > 0)
        parts += Der::writeInteger(QCA::BigInteger(options.pathLimit()));
    return Der::writeSequence(parts);
}

QByteArray policies(const QStringList &policies)
{
    QByteArray content;
    for (const QString &policy : policies) {
        const QByteArray oid = Der::writeOid(policy.toLatin1());
        if (!oid.isEmpty())
            content += Der::write(Der::Sequence, oid);
    }
    return content.isEmpty() ? QByteArray() : Der::write(Der::Sequence, content);
}

} // namespace

// A named bit list: without zero bits at its end (X.690, 11.2.2).
QByteArray encodeKeyUsage(const QCA::Constraints &constraints)
{
    QByteArray octets(3, '\0');
    int last = -1;
    for (const QCA::ConstraintType &constraint : constraints) {
        const int bit = constraint.known();
        if (constraint.section() != QCA::ConstraintType::KeyUsage || bit < 0 || bit >= KeyUsageBits)
            continue;
        octets[1 + bit / 8] = char(octets.at(1 + bit / 8) | 0x80 >> bit % 8);
        last = qMax(last, bit);
    }
    if (last < 0)
        return {};
    octets[0] = char(7 - last % 8);
    return Der::write(Der::BitString, octets.left(2 + last / 8));
}

QByteArray encodePurposes(const QCA::Constraints &constraints)
{
    QByteArray content;
    for (const QCA::ConstraintType &constraint : constraints) {
        if (constraint.section() == QCA::ConstraintType::ExtendedKeyUsage)
            content += Der::writeOid(constraint.id().toLatin1());
    }
    return content.isEmpty() ? QByteArray() : Der::write(Der::Sequence, content);
}

QByteArray encodeExtensions(const QCA::CertificateOptions &options, const QByteArray &subjectKeyId)
{
    QByteArray content;
    const auto add = [&content](const char *oid, bool critical, const QByteArray &value) {
        if (!value.isEmpty())
            content += extension(oid, critical, value);
    };
    if (options.isCA())
        add(Oid::BasicConstraints, true, basicConstraints(options));
    if (!subjectKeyId.isEmpty())
        add(Oid::SubjectKeyId, false, Der::write(Der::OctetString, subjectKeyId));
    add(Oid::KeyUsage, true, encodeKeyUsage(options.constraints()));
    add(Oid::ExtendedKeyUsage, false, encodePurposes(options.constraints()));
    add(Oid::SubjectAlternativeName, false, encodeAlternativeNames(options.infoOrdered()));
    add(Oid::CertificatePolicies, false, policies(options.policies()));
    return content.isEmpty() ? QByteArray() : Der::write(Der::Sequence, content);
}

} // namespace Trivex
