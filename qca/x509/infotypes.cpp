// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/infotypes.h"

#include "qca/asn1/attributeids.h"

#include <array>

namespace Trivex {

namespace {

constexpr int FirstOidType = InnInfo;
constexpr int LastOidType = IdentificationKindInfo;

// Order 621 of the Russian federal security service (2020) for 3.131.1.1 and 100.x. Dotted OIDs,
// because libcrypto has no short name for every one of them.
constexpr std::array<const char *, LastOidType - FirstOidType + 1> Oids = {
    Oid::Inn, Oid::Ogrn, Oid::Snils, Oid::Innle, Oid::Ogrnip, Oid::IdentificationKind,
};

using TypeTable = std::array<QCA::CertificateInfoType, LastOidType + 1>;

TypeTable makeTypes()
{
    TypeTable table;
    for (int number = 0; number <= XmppInfo; ++number)
        table[size_t(number)] = QCA::CertificateInfoType(QCA::CertificateInfoTypeKnown(number));
    for (int number = FirstOidType; number <= LastOidType; ++number)
        table[size_t(number)] =
            QCA::CertificateInfoType(infoOid(number), QCA::CertificateInfoType::DN);
    return table;
}

} // namespace

QString infoOid(int number)
{
    if (number < FirstOidType || number > LastOidType)
        return {};
    return QString::fromLatin1(Oids[size_t(number - FirstOidType)]);
}

QCA::CertificateInfoType infoType(int number)
{
    // Made once: a type allocates, and every row of a list asks for several.
    // Never deleted: QCA's threads read certificates while the process ends.
    static const auto &types = *new TypeTable(makeTypes());
    if (number < 0 || number > LastOidType)
        return {};
    return types[size_t(number)];
}

QString infoValue(const QCA::CertificateInfo &info, int number)
{
    return info.value(infoType(number));
}

} // namespace Trivex
