// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/sharedtypes.h"

#include "qca/x509/infotypes.h"

#include <QHash>

#include <array>
#include <mutex>
#include <shared_mutex>

namespace Trivex {

namespace {

// Certificates may contain any OID, so the table has a limit.
constexpr int MostTypes = 1024;
constexpr int LongestCachedOid = 64; // octets

/// Never deleted, like all of these: QCA's threads read certificates while the process ends.
template <class Type> class TypeTable {
public:
    template <class Make> Type type(Der::Slice oid, Make make)
    {
        {
            const std::shared_lock lock(m_mutex);
            const auto found = m_types.constFind(oid.view());
            if (found != m_types.constEnd())
                return *found;
        }
        const Type made = make(oid);
        const std::lock_guard lock(m_mutex);
        if (m_types.size() < MostTypes && oid.size <= LongestCachedOid)
            m_types.insert(oid.bytes(), made);
        return made;
    }

private:
    std::shared_mutex m_mutex;
    QHash<QByteArray, Type> m_types;
};

// An OID that does not decode still names the attribute, by its octets.
QString idOf(Der::Slice oid)
{
    const QByteArray dotted = Der::oidText(oid);
    return QString::fromLatin1(dotted.isEmpty() ? '#' + oid.bytes().toHex() : dotted);
}

QCA::CertificateInfoType makeAttributeType(Der::Slice oid)
{
    const QString id = idOf(oid);
    for (int number = 0; number <= IdentificationKindInfo; ++number) {
        const QCA::CertificateInfoType known = infoType(number);
        if (known.section() == QCA::CertificateInfoType::DN && known.id() == id)
            return known;
    }
    return QCA::CertificateInfoType(id, QCA::CertificateInfoType::DN);
}

QCA::ConstraintType makePurpose(Der::Slice oid)
{
    return QCA::ConstraintType(idOf(oid), QCA::ConstraintType::ExtendedKeyUsage);
}

} // namespace

QCA::CertificateInfoType sharedAttributeType(Der::Slice oid)
{
    static auto &table = *new TypeTable<QCA::CertificateInfoType>;
    return table.type(oid, &makeAttributeType);
}

QCA::ConstraintType sharedPurpose(Der::Slice oid)
{
    static auto &table = *new TypeTable<QCA::ConstraintType>;
    return table.type(oid, &makePurpose);
}

QCA::ConstraintType sharedKeyUsage(int bit)
{
    static const auto &types = *new std::array<QCA::ConstraintType, 9>{
        QCA::ConstraintType(QCA::DigitalSignature), QCA::ConstraintType(QCA::NonRepudiation),
        QCA::ConstraintType(QCA::KeyEncipherment),  QCA::ConstraintType(QCA::DataEncipherment),
        QCA::ConstraintType(QCA::KeyAgreement),     QCA::ConstraintType(QCA::KeyCertificateSign),
        QCA::ConstraintType(QCA::CRLSign),          QCA::ConstraintType(QCA::EncipherOnly),
        QCA::ConstraintType(QCA::DecipherOnly),
    };
    return types[size_t(bit)];
}

} // namespace Trivex
