// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/candidateindex.h"
#include "qca/chains/chaincheck.h"
#include "tests/chains/madechain.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

/// The search for the certificates and lists that a path may need, among all that there are.
class TestCandidateIndex : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void findsWhatBelongsToAPath();
    void findsTheTrustedOneAmongNamesakes();

private:
    QCA::Initializer m_initializer;
    const Party m_root = make({"Root", -10, Year, authority()}, nullptr);
    const Party m_middle = make({"Middle", -10, Year, authority()}, &m_root);
    const Party m_leaf = make({"Leaf", -1, 30}, &m_middle);
};

void TestCandidateIndex::findsWhatBelongsToAPath()
{
    CandidateIndex ours;
    ours.add(m_root.anchor());
    ours.add(m_middle.candidate("token"));
    ours.add(m_leaf.candidate("token"));
    ours.addList(list(m_middle, {}));
    const Party stranger = make({"Stranger", -1, 30, authority()}, nullptr);
    ours.add(stranger.anchor());
    ours.addList(list(stranger, {}));
    CandidateIndex file;
    file.add(m_middle.candidate("file"));
    file.add(m_root.candidate("file"));
    const ChainInput input = ours.inputFor(m_leaf.der(), file);
    QCOMPARE(input.candidates.size(), 3);
    QCOMPARE(input.lists.size(), 1);
    const ChainResult result = checkChain(input);
    QCOMPARE(result.verdict, ChainVerdict::Good);
    QCOMPARE(result.steps.at(1).place, QStringLiteral("token"));
    QCOMPARE(ours.inputFor(m_leaf.der(), file), input);
    ours.remove(m_middle.candidate("token"));
    QCOMPARE(checkChain(ours.inputFor(m_leaf.der(), file)).steps.at(1).place,
             QStringLiteral("file"));
    // One that is trusted in one place is trusted, whatever else holds it.
    QVERIFY(checkChain(file.inputFor(m_leaf.der(), ours)).verdict == ChainVerdict::Good);
    ours.remove(m_root.anchor());
    const ChainResult untrusted = checkChain(ours.inputFor(m_leaf.der(), file));
    QCOMPARE(untrusted.steps.last().findings.constFirst().reason, ChainReason::RootNotTrusted);
    ours.clearLists();
    QVERIFY(ours.inputFor(m_leaf.der(), file).lists.isEmpty());
}

void TestCandidateIndex::findsTheTrustedOneAmongNamesakes()
{
    CandidateIndex index;
    for (int i = 0; i < 3000; ++i) {
        // All of one name, as somebody might make them: the trusted one is found among them.
        ChainCandidate other = m_middle.candidate("token");
        other.der[other.der.size() - 1] = char(i);
        other.der[other.der.size() - 2] = char(i >> 8);
        index.add(other);
    }
    index.add(m_root.anchor());
    index.add(m_middle.candidate("user", true));
    const ChainInput input = index.inputFor(m_leaf.der());
    QVERIFY(input.candidates.size() <= 102);
    QCOMPARE(checkChain(input).verdict, ChainVerdict::Good);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestCandidateIndex test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_candidateindex.moc"
