// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/shown.h"

#include "qca/asn1/der.h"

namespace Trivex {

/// The groups of a description as they are put together.
class Groups {
public:
    /// A group of `rows`, at most `MaxShownRows` of them; a last row counts the others. Nothing
    /// without rows. Values are cut short once there is enough text in all.
    Groups &add(ShownTopic topic, const QString &title, const QVector<ShownRow> &rows);
    const QVector<ShownGroup> &all() const { return m_groups; }

private:
    void append(const ShownRow &row, QVector<ShownRow> *rows);

    int m_size = 0; ///< characters in all values
    QVector<ShownGroup> m_groups;
};

// Each takes DER of the kind that its name says, and adds nothing where the bytes are none.

bool addCertificate(Der::Slice der, Groups *groups);
bool addRequest(Der::Slice der, Groups *groups);
bool addRevocationList(Der::Slice der, Groups *groups);

// Parts that several of them share.

void addName(ShownTopic topic, Der::Slice name, Groups *groups);
void addPublicKey(Der::Slice publicInfo, Groups *groups);
void addExtensions(Der::Slice extensions, Groups *groups);
void addSignature(const QByteArray &bits, Groups *groups);

/// The number of the version as people count it; `content` is that of an INTEGER from 0 on.
ShownRow versionRow(Der::Slice content);
/// The signature algorithm in words, from the whole AlgorithmIdentifier.
ShownRow signatureRow(Der::Slice algorithm);

} // namespace Trivex
