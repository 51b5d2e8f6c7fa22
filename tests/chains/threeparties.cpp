// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/chains/threeparties.h"

namespace MadeChain {

using namespace Trivex;

ChainInput inputOf(const Party &leaf, const QVector<ChainCandidate> &candidates,
                   const QVector<QByteArray> &lists)
{
    ChainInput input;
    input.certificate = leaf.der();
    input.candidates = candidates;
    input.lists = lists;
    return input;
}

QByteArray described(const ChainResult &result)
{
    QByteArray text;
    for (const ChainStep &step : result.steps) {
        text += step.subject.toUtf8() + '(' + QByteArray::number(int(step.verdict));
        for (const ChainFinding &one : step.findings)
            text += " r" + QByteArray::number(int(one.reason)) + "/" + QByteArray::number(one.code);
        text += ") ";
    }
    return text;
}

} // namespace MadeChain
