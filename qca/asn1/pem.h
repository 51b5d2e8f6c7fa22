// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace Trivex {

/// One block of a PEM text (RFC 7468).
struct PemBlock {
    QByteArray label; ///< such as "CERTIFICATE"
    QByteArray header; ///< what RFC 1421 puts before the data; empty in all newer files
    QByteArray data; ///< still encrypted when the header says so
    int begin = 0; ///< where the block begins in the text
    int end = 0; ///< behind its end, and the line's
};

/// All well-formed blocks of `text`, in order. Text between blocks and broken blocks are skipped;
/// `*broken`, if given, counts the broken ones.
TRIVEX_QCA_EXPORT QList<PemBlock> readPem(const QByteArray &text, int *broken = nullptr);

/// The data of the first block with one of `labels`; empty when there is none, and for a text of
/// more than `MaxFileBytes` characters.
QByteArray readPem(const QString &text, const QList<QByteArray> &labels);

TRIVEX_QCA_EXPORT QByteArray writePem(const QByteArray &label, const QByteArray &data);

} // namespace Trivex
