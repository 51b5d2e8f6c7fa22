// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chaincheck.h"
#include "tests/chains/madechain.h"

#include <QObject>
#include <QtCrypto>

namespace MadeChain {

/// The question for the path of `leaf`.
Trivex::ChainInput inputOf(const Party &leaf, const QVector<Trivex::ChainCandidate> &candidates,
                           const QVector<QByteArray> &lists = {});
/// What a failed test shows of it.
QByteArray described(const Trivex::ChainResult &result);

/// A test over a root, an authority below it and a certificate of that one.
class ThreePartiesTest : public QObject {
private:
    QCA::Initializer m_initializer;

protected:
    const Party m_root = make({"Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Leaf", -1, 30}, &m_middle);
};

} // namespace MadeChain
