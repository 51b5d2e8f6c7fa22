// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Names of people and of files, and texts that are looked for.
#include "qca/x509/names.h"
#include "fuzz/target.h"
#include "qca/asn1/der.h"
#include "qca/base/filenames.h"
#include "qca/base/searchtext.h"
#include "qca/x509/canonicalname.h"

using namespace Trivex;

void TrivexFuzz::take(const QByteArray &input)
{
    const Der::Slice slice = Der::sliceOf(input);
    decodeName(slice);
    const QByteArray canonical = canonicalName(slice);
    check(canonical.isEmpty() || isSameName(slice, slice), "a name equals itself");
    Der::oidText(slice);

    const QString text = QString::fromUtf8(input);
    const QString file = safeFileName(text);
    check(!file.contains(QLatin1Char('/')) && !file.contains(QChar::Null)
              && file != QLatin1String("..") && file != QLatin1String("."),
          "a file name stays in its folder");
    check(file.toUtf8().size() <= 255, "a file name fits");
    check(safeFileName(file) == file, "a safe file name is left alone");
    const QString folded = foldedText(text);
    check(foldedText(folded) == folded, "folding twice is folding once");
}
