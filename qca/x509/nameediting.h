// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QList>
#include <QtCrypto>

#include <optional>

namespace Trivex {

/// One value that is edited: replaced, taken away (without `after`) or added (without `before`).
struct InfoChange {
    QCA::CertificateInfoType type;
    std::optional<QString> before;
    std::optional<QString> after;
};

/// The changes that lead from `before` to `after`. Where values of one type go and others come, one
/// takes the place of the other, beginning with those that a look-up in the map gives.
QList<InfoChange> infoChanges(const QCA::CertificateInfo &before,
                              const QCA::CertificateInfo &after);

/// `name` (DER, with tag and length) with the changes of its attributes; those that stay keep their
/// bytes and their places. A change of `QCA::Email` changes the attribute of such an address too
/// where there is one; an added one belongs to the alternative names and is left out here. A value
/// that can't be written changes nothing. Empty where one to be changed is in a set of which other
/// bytes can't be read: they would be lost.
QByteArray editName(Der::Slice name, const QList<InfoChange> &changes);

/// `names` (content of GeneralNames) with the changes of alternative names, by the same rules.
/// What can't be read stays as it is, behind all others. Empty when none is left.
QByteArray editGeneralNames(Der::Slice names, const QList<InfoChange> &changes);

} // namespace Trivex
