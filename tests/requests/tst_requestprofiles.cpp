// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/storedanswers.h"
#include "tools/keyrequest.h"
#include "tools/requestprofiles.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;

/// Files of profiles: whose they are, and how large they may be.
class TestRequestProfiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void profilesOfOneFile();
    void largeProfiles();
    void pinOfNoKey();

private:
    QCA::Initializer m_initializer;
};

/// Names that differ only in what a file name can't hold are one file: it is replaced by consent
/// alone.
void TestRequestProfiles::profilesOfOneFile()
{
    RequestContents first;
    first.names = {{QStringLiteral("commonName"), QStringLiteral("first")}};
    RequestContents second;
    second.names = {{QStringLiteral("commonName"), QStringLiteral("second")}};
    RequestProfiles profiles;
    QVERIFY(!profiles.exists(QStringLiteral("a/b")));
    QCOMPARE(profiles.save(QStringLiteral("a/b"), first, false), RequestProfiles::Saved);
    for (const char *name : {"a/b", "a\\b", "a_b"}) {
        const QString other = QString::fromLatin1(name);
        QVERIFY(profiles.exists(other));
        QCOMPARE(RequestProfiles::listedName(other), QStringLiteral("a_b"));
        QCOMPARE(profiles.save(other, second, false), RequestProfiles::Exists);
        QCOMPARE(profiles.load(QStringLiteral("a_b"))->title(), QStringLiteral("first"));
    }
    KeyRequest request;
    request.setContents(second);
    QCOMPARE(request.saveProfile(QStringLiteral("a_b")), int(RequestProfiles::Exists));
    QCOMPARE(request.saveProfile(QStringLiteral("a_b"), true), int(RequestProfiles::Saved));
    QCOMPARE(profiles.load(QStringLiteral("a/b"))->title(), QStringLiteral("second"));
    // Two that are as long as a file's name may be, and differ behind that.
    const QString tail(300, QLatin1Char('n'));
    QCOMPARE(profiles.save(tail + QStringLiteral("1"), first, false), RequestProfiles::Saved);
    QCOMPARE(profiles.save(tail + QStringLiteral("2"), second, false), RequestProfiles::Exists);
    QVERIFY(QDir(RequestProfiles::directory()).removeRecursively());
}

/// A page makes a field of each value, and nobody waits for ten thousand of them.
void TestRequestProfiles::largeProfiles()
{
    QDir().mkpath(RequestProfiles::directory());
    const RequestProfiles reader;
    const auto write = [](const QByteArray &text) {
        QFile file(RequestProfiles::directory() + QStringLiteral("large.json"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(text), qint64(text.size()));
    };
    const auto subjectOf = [](int count, int length) {
        QByteArrayList values;
        for (int i = 0; i < count; ++i)
            values +=
                "{\"type\":\"organizationalUnit\",\"value\":\"" + QByteArray(length, 'x') + "\"}";
        return QByteArray("{\"subject\":[" + values.join(',') + "]}");
    };
    write(subjectOf(RequestProfiles::MostValues, 8));
    QVERIFY(reader.load(QStringLiteral("large")));
    write(subjectOf(RequestProfiles::MostValues + 1, 8));
    QVERIFY(!reader.load(QStringLiteral("large")));
    write(subjectOf(1, RequestProfiles::MostBytes));
    QVERIFY(!reader.load(QStringLiteral("large")));
    RequestContents contents;
    for (int i = 0; i <= RequestProfiles::MostValues; ++i)
        contents.names.append({QStringLiteral("organizationalUnit"), QString::number(i)});
    RequestProfiles profiles;
    QCOMPARE(profiles.save(QStringLiteral("many"), contents, true), RequestProfiles::TooLarge);
    contents.names = {
        {QStringLiteral("commonName"), QString(RequestProfiles::MostBytes, QLatin1Char('x'))}};
    QCOMPARE(profiles.save(QStringLiteral("long"), contents, true), RequestProfiles::TooLarge);
    QVERIFY(!profiles.exists(QStringLiteral("long")));
    QVERIFY(QDir(RequestProfiles::directory()).removeRecursively());
}

/// A PIN that was given for a key which can't be made must not answer what comes next.
void TestRequestProfiles::pinOfNoKey()
{
    const QString store = QStringLiteral("store");
    KeyRequest request;
    QSignalSpy finished(&request, &KeyRequest::finished);
    request.prepareKey(store, -1, QStringLiteral("label"), QStringLiteral("1234"));
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(!request.message().isEmpty());
    QVERIFY(!takeStoredAnswers(store));
    // Nor where no token could make one.
    request.prepareKey(store, KeyRequest::P256, QStringLiteral("label"), QStringLiteral("1234"));
    QTRY_COMPARE(finished.count(), 2);
    QCOMPARE(request.error(), int(KeyRequest::KeyNotMade));
    QVERIFY(!takeStoredAnswers(store));
}

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    QCoreApplication application(argc, argv);
    TestRequestProfiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestprofiles.moc"
