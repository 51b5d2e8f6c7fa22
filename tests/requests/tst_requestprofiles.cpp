// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/storedanswers.h"
#include "tests/support/marktranslator.h"
#include "tools/keyrequest.h"
#include "tools/requestprofiles.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Trivex;

/// Profiles of requests: what they bring, whose their files are, and how large these may be.
class TestRequestProfiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void profilesOfOneFile();
    void largeProfiles();
    void pinOfNoKey();
    void profiles();
    void builtInProfiles();
    void typedValuesGoAlong();
    void damagedProfiles();

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

void TestRequestProfiles::profiles()
{
    RequestProfiles profiles;
    QSignalSpy changed(&profiles, &RequestProfiles::namesChanged);
    const QStringList before = profiles.names();
    RequestContents contents;
    contents.names = {{QStringLiteral("commonName"), QString::fromUtf8("Имя")},
                      {QStringLiteral("1.2.3.4"), QStringLiteral("x")}};
    contents.alternativeNames = {{QStringLiteral("dns"), QString()}};
    contents.keyUsages = QStringList{QStringLiteral("keyAgreement")};
    contents.purposes = QStringList{QStringLiteral("1.2.3.4.5")};
    const QString name = QString::fromUtf8("Мой / профиль");
    QCOMPARE(profiles.save(name, contents, false), RequestProfiles::Saved);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(profiles.names().mid(0, before.size()), before);
    const QString listed = profiles.names().last();
    QVERIFY(!listed.contains(QLatin1Char('/')));
    for (const QString &one : {name, listed}) {
        const auto loaded = RequestProfiles().load(one);
        QVERIFY(loaded);
        QCOMPARE(loaded->toJson(), contents.toJson());
        QVERIFY(loaded->names == contents.names);
    }
    QVERIFY(!profiles.isBuiltIn(listed));
    QVERIFY(profiles.remove(listed));
    QVERIFY(!profiles.remove(listed));
    QCOMPARE(profiles.names(), before);
    QVERIFY(!profiles.load(listed));
    QCOMPARE(profiles.save(QStringLiteral(" "), contents, true), RequestProfiles::NotSaved);
}

void TestRequestProfiles::builtInProfiles()
{
    RequestProfiles profiles;
    const QStringList names = profiles.names();
    QCOMPARE(names,
             (QStringList{QStringLiteral("simple"), QStringLiteral("web-server"),
                          QStringLiteral("email"), QStringLiteral("russian-person"),
                          QStringLiteral("russian-company")}));
    for (const QString &name : names) {
        QVERIFY(profiles.isBuiltIn(name));
        QVERIFY(profiles.title(name).startsWith(QLatin1String("tr:")));
        QVERIFY(!profiles.remove(name));
        QCOMPARE(profiles.save(name, {}, true), RequestProfiles::NotSaved);
        auto contents = profiles.load(name);
        QVERIFY(contents);
        // Nothing but the name is wanting.
        QCOMPARE(contents->check().problem,
                 contents->title().isEmpty() ? RequestContents::NoName
                                             : RequestContents::NoProblem);
        contents->names.first().value = QStringLiteral("A");
        QCOMPARE(contents->check().problem, RequestContents::NoProblem);
    }
    KeyRequest request;
    QVERIFY(request.loadProfile(QStringLiteral("web-server")));
    QCOMPARE(request.purposes(), QStringList{QStringLiteral("serverAuth")});
    QVERIFY(!request.loadProfile(QStringLiteral("none")));
    QVERIFY(!request.loadProfile(QString()));
}

/// From one kind of request to another: a name has one country, and what a profile brought by
/// itself goes with it.
void TestRequestProfiles::typedValuesGoAlong()
{
    const auto values = [](const KeyRequest &request, const char *type) {
        QStringList found;
        for (const RequestValue &value : request.contents().names) {
            if (value.type == QLatin1String(type) && !value.value.isEmpty())
                found += value.value;
        }
        return found.join(QLatin1Char(' '));
    };
    const QString person = QStringLiteral("russian-person");
    const QString simple = QStringLiteral("simple");
    KeyRequest request;
    QVERIFY(request.loadProfile(simple));
    const int country = request.names()->values().indexOf({QStringLiteral("country"), QString()});
    QVERIFY(country >= 0);
    request.names()->setValue(country, QStringLiteral("DE"));
    QVERIFY(request.loadProfile(person));
    QCOMPARE(values(request, "country"), QStringLiteral("DE"));
    QVERIFY(request.loadProfile(simple));
    QCOMPARE(values(request, "country"), QStringLiteral("DE"));
    // Typed, though the profile has the same.
    request.names()->setValue(country, QStringLiteral("RU"));
    QVERIFY(request.loadProfile(person));
    QVERIFY(request.loadProfile(simple));
    QCOMPARE(values(request, "country"), QStringLiteral("RU"));
    request.clear();
    QVERIFY(request.loadProfile(person));
    QCOMPARE(values(request, "country"), QStringLiteral("RU"));
    QVERIFY(request.loadProfile(simple));
    QCOMPARE(values(request, "country"), QString());
    // Of units there may be several.
    request.addName(QStringLiteral("organizationalUnit"), QStringLiteral("A"));
    request.addName(QStringLiteral("organizationalUnit"), QStringLiteral("B"));
    QVERIFY(request.loadProfile(QStringLiteral("web-server")));
    QCOMPARE(values(request, "organizationalUnit"), QStringLiteral("A B"));
}

void TestRequestProfiles::damagedProfiles()
{
    QDir().mkpath(RequestProfiles::directory());
    const auto write = [](const char *name, const QByteArray &text) {
        QFile file(RequestProfiles::directory() + QString::fromLatin1(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write("cut.json", "{\"subject\":[");
    write("list.json", "[]");
    write("odd.json",
          "{\"subject\":[1,{\"value\":\"x\"},{\"type\":\"commonName\"}],"
          "\"keyUsage\":\"all\",\"extendedKeyUsage\":[1]}");
    const RequestProfiles profiles;
    QVERIFY(!profiles.load(QStringLiteral("cut")));
    QVERIFY(!profiles.load(QStringLiteral("list")));
    const auto odd = profiles.load(QStringLiteral("odd"));
    QVERIFY(odd);
    QCOMPARE(odd->names.size(), 1);
    QVERIFY(odd->keyUsages.isEmpty());
    QVERIFY(odd->purposes.isEmpty());
    QVERIFY(QDir(RequestProfiles::directory()).removeRecursively());
}

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    QCoreApplication application(argc, argv);
    const TrivexTest::MarkTranslator translator;
    TestRequestProfiles test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_requestprofiles.moc"
