// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

namespace Trivex {

/// A text that strangers chose (the names in certificates, the labels of tokens) as one line that
/// reads as it is written: every control character, line separator and invisible mark that turns
/// the direction of writing becomes `standIn`. Everything else stays as it is. For what is shown
/// and for names of files; never for what is compared.
TRIVEX_QCA_EXPORT QString plainText(QString text,
                                    QChar standIn = QChar(QChar::ReplacementCharacter));

} // namespace Trivex
