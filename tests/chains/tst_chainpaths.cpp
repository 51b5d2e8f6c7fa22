// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Which path is found where there are several ways, none, or no end of them.
#include "qca/chains/candidateindex.h"
#include "tests/chains/threeparties.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;
using namespace MadeChain;

class TestChainPaths : public ThreePartiesTest {
    Q_OBJECT
private Q_SLOTS:
    void namesakesWithOtherKeys();
    void crossSigned();
    void wayRound();
    void ring();
    void knot();
    void longPath();
    void places();
    void notACertificate();
    void cancelled();
};

// Of several that have the name, the one with the right key is taken, wherever it stands.
void TestChainPaths::namesakesWithOtherKeys()
{
    const Party first = make({"Same", -10, Year, authority(), EVP_sha256(), false}, nullptr);
    const Party second = make({"Same", -10, Year, authority(), EVP_sha256(), false}, nullptr);
    for (const Party *issuer : {&first, &second}) {
        const Party leaf = make({"Leaf", -1, 30, {}, EVP_sha256(), false}, issuer);
        for (const bool isTurned : {false, true}) {
            QVector<ChainCandidate> both = {first.anchor(), second.anchor()};
            if (isTurned)
                std::reverse(both.begin(), both.end());
            const ChainResult result = checkChain(inputOf(leaf, both));
            QVERIFY2(result.verdict == ChainVerdict::Good, described(result).constData());
            QCOMPARE(result.steps.last().der, issuer->der());
        }
    }
}

// One key and name, signed by two roots of which one is trusted: that path is found.
void TestChainPaths::crossSigned()
{
    const Party other = make({"Other root", -10, Year, authority()}, nullptr);
    const Party bridge = make({"Bridge", -10, Year, authority()}, &other);
    const Party cross = make({"Bridge", -10, Year, authority()}, &m_root, share(bridge.key.get()));
    const Party leaf = make({"Leaf", -1, 30}, &bridge);
    for (const bool isTurned : {false, true}) {
        QVector<ChainCandidate> candidates = {other.candidate(), bridge.candidate(),
                                              cross.candidate(), m_root.anchor()};
        if (isTurned)
            std::reverse(candidates.begin(), candidates.end());
        const ChainResult result = checkChain(inputOf(leaf, candidates));
        QVERIFY2(result.verdict == ChainVerdict::Good, described(result).constData());
        QCOMPARE(result.steps.size(), 3);
        QCOMPARE(result.steps.at(1).der, cross.der());
    }
}

// Of two certificates of one authority that nearer to the root may be no good, and the other is.
void TestChainPaths::wayRound()
{
    const Party near =
        make({"Bridge", -10, Year, authority("critical,CA:TRUE,pathlen:0")}, &m_root);
    const Party far = make({"Bridge", -10, Year, authority()}, &m_middle, share(near.key.get()));
    const Party below = make({"Below", -10, Year, authority()}, &far);
    const Party leaf = make({"Leaf", -1, 30}, &near);
    const Party deepLeaf = make({"Leaf", -1, 30}, &below);
    const QByteArray revoking = list(m_root, {{&near, -3}});
    const QVector<ChainCandidate> one = {m_root.anchor(), near.candidate(), below.candidate(),
                                         m_middle.candidate()};
    QVector<ChainCandidate> both = one;
    both += far.candidate();
    // Without the other the finding stands, and no missing issuer instead of it.
    const ChainResult revoked = checkChain(inputOf(leaf, one, {revoking}));
    QCOMPARE(revoked.verdict, ChainVerdict::Bad);
    QCOMPARE(revoked.steps.at(1).findings.constFirst().reason, ChainReason::Revoked);
    const ChainResult tooLong = checkChain(inputOf(deepLeaf, one));
    QCOMPARE(tooLong.verdict, ChainVerdict::Bad);
    QCOMPARE(tooLong.steps.size(), 4);
    const ChainResult round = checkChain(inputOf(leaf, both, {revoking}));
    QVERIFY2(round.verdict == ChainVerdict::Good, described(round).constData());
    QCOMPARE(round.steps.at(1).der, far.der());
    const ChainResult deep = checkChain(inputOf(deepLeaf, both));
    QVERIFY2(deep.verdict == ChainVerdict::Good, described(deep).constData());
    QCOMPARE(deep.steps.size(), 5);
}

// Two authorities that have signed each other, and nobody else: no path, and an end.
void TestChainPaths::ring()
{
    const Party one = make({"One", -10, Year, authority()}, nullptr);
    const Party two = make({"Two", -10, Year, authority()}, &one);
    const Party again = make({"One", -10, Year, authority()}, &two, share(one.key.get()));
    const Party leaf = make({"Leaf", -1, 30}, &two);
    const ChainResult result = checkChain(inputOf(leaf, {two.candidate(), again.candidate()}));
    QVERIFY2(result.verdict == ChainVerdict::Unknown, described(result).constData());
    QVERIFY(result.steps.size() <= 4);
    const ChainResult trusted =
        checkChain(inputOf(leaf, {two.candidate(), again.candidate(), one.anchor()}));
    QVERIFY2(trusted.verdict == ChainVerdict::Good, described(trusted).constData());
}

// Many certificates of one name that could all have issued each other end within a moment.
void TestChainPaths::knot()
{
    QVector<ChainCandidate> candidates;
    const Party first = make({"Knot", -10, Year, authority(), EVP_sha256(), false}, nullptr);
    for (int i = 0; i < 200; ++i)
        candidates += make({"Knot", -10, Year, authority(), EVP_sha256(), false}, &first,
                           share(first.key.get()))
                          .candidate();
    QElapsedTimer timer;
    timer.start();
    const ChainResult result = checkChain(inputOf(first, candidates));
    QVERIFY2(timer.elapsed() < 5000, QByteArray::number(timer.elapsed()).constData());
    QVERIFY(result.verdict != ChainVerdict::Good);
}

void TestChainPaths::longPath()
{
    for (const int length : {100, 130}) {
        std::vector<Party> path;
        path.push_back(make({"0", -10, Year, authority()}, nullptr));
        QVector<ChainCandidate> candidates = {path.front().anchor()};
        for (int i = 1; i < length; ++i) {
            const QByteArray name = QByteArray::number(i);
            path.push_back(make({name.constData(), -10, Year, authority()}, &path.back()));
            candidates += path.back().candidate();
        }
        const ChainResult result = checkChain(inputOf(path.back(), candidates));
        QVERIFY(result.steps.size() <= 100);
        const bool isGood = result.verdict == ChainVerdict::Good;
        QVERIFY2(isGood == (length == 100), described(result).constData());
    }
}

void TestChainPaths::places()
{
    const ChainResult result = checkChain(
        inputOf(m_leaf, {m_leaf.candidate("token"), m_middle.candidate("file"), m_root.anchor()}));
    QCOMPARE(result.steps.size(), 3);
    QCOMPARE(result.steps.at(0).place, QStringLiteral("token"));
    QCOMPARE(result.steps.at(1).place, QStringLiteral("file"));
    QCOMPARE(result.steps.at(2).place, QStringLiteral("system"));
    QVERIFY(result.steps.at(2).isAnchor);
    QCOMPARE(result.steps.at(0).subject, QStringLiteral("Leaf"));
    QCOMPARE(result.steps.at(0).issuer, QStringLiteral("Middle"));
    QCOMPARE(result.steps.at(2).issuer, QStringLiteral("Root"));
    QCOMPARE(result.steps.at(1).der, m_middle.der());
}

void TestChainPaths::notACertificate()
{
    ChainInput input;
    for (const QByteArray &bytes : {QByteArray(), QByteArray("\x30\x03\x02\x01\x05", 5)}) {
        input.certificate = bytes;
        const ChainResult result = checkChain(input);
        QVERIFY(result.steps.isEmpty());
        QCOMPARE(result.verdict, ChainVerdict::Unknown);
    }
    input = inputOf(
        m_leaf, {{"nonsense", QStringLiteral("file"), true}, m_middle.candidate(), m_root.anchor()},
        {"nonsense"});
    QCOMPARE(checkChain(input).verdict, ChainVerdict::Good);
    CandidateIndex index;
    index.add({"nonsense", QStringLiteral("file"), true});
    index.addList("nonsense");
    QVERIFY(index.inputFor("nonsense").candidates.isEmpty());
}

void TestChainPaths::cancelled()
{
    const std::atomic<bool> isCancelled{true};
    const ChainResult result =
        checkChain(inputOf(m_leaf, {m_middle.candidate(), m_root.anchor()}), isCancelled);
    QVERIFY(result.steps.size() <= 3);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestChainPaths test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chainpaths.moc"
