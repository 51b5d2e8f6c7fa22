// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// How many certificates are looked at for one path, on both sides of the bound.
#include "qca/base/bounds.h"
#include "qca/chains/candidateindex.h"
#include "qca/chains/chaincheck.h"
#include "tests/chains/madechain.h"

#include <QtCrypto>
#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

class TestChainBounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void candidates_data();
    void candidates();

private:
    QCA::Initializer m_initializer;
};

void TestChainBounds::candidates_data()
{
    QTest::addColumn<int>("strangers");
    QTest::addColumn<int>("given");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("the root is the last") << MaxChainCandidates - 2 << MaxChainCandidates << true;
    QTest::newRow("the root is one too many")
        << MaxChainCandidates - 1 << MaxChainCandidates << false;
}

/// Strangers have made certificates that bear the name of the issuer, and others that bear the
/// names of their issuers; all of them are looked at before the root.
void TestChainBounds::candidates()
{
    QFETCH(int, strangers);
    QFETCH(int, given);
    QFETCH(bool, isFound);
    const Party root = make({"Root", -10, Year, authority()}, nullptr);
    const Party middle = make({"Middle", -10, Year, authority()}, &root);
    const Party leaf = make({"Leaf", -1, 30}, &middle);
    CandidateIndex index;
    int left = strangers;
    for (int name = 0; left > 0; ++name) {
        const QByteArray issuer = "Stranger " + QByteArray::number(name);
        const Party other = make({issuer.constData(), -10, Year, authority()}, nullptr);
        index.add(make({"Middle", -10, Year, authority()}, &other).candidate());
        index.add(other.candidate());
        left -= 2;
        for (int i = 2; i < MaxNamesakes && left > 0; ++i, --left)
            index.add(make({issuer.constData(), -10, Year, authority()}, nullptr).candidate());
    }
    index.add(middle.candidate());
    index.add(root.anchor());
    const ChainInput input = index.inputFor(leaf.der());
    QCOMPARE(input.candidates.size(), given);
    QCOMPARE(input.candidates.contains(root.anchor()), isFound);
    const ChainResult result = checkChain(input);
    QCOMPARE(result.verdict, isFound ? ChainVerdict::Good : ChainVerdict::Unknown);
    QCOMPARE(result.steps.size(), isFound ? 3 : 2);
}

QTEST_GUILESS_MAIN(TestChainBounds)
#include "tst_chainbounds.moc"
