// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/files.h"
#include "tools/texts.h"
#include "tools/tokenerrors.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Trivex;

Q_DECLARE_METATYPE(QVector<Trivex::Purpose>)

namespace {

/// Words of a sentence, not an identifier nobody translated.
bool isSentence(const QString &text)
{
    return text.endsWith(QLatin1Char('.')) && text.contains(QLatin1Char(' '))
        && !text.contains(QLatin1String("trivex-"));
}

int sentences(const QString &text)
{
    return text.count(QRegularExpression(QStringLiteral("[.:;](\\s|$)")));
}

} // namespace

/// What went wrong is said with its cause and the next step, in both languages.
class TestAppErrors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void tokenErrors_data();
    void tokenErrors();
    void fitThePurpose_data();
    void fitThePurpose();
    void files_data() { languages(); }
    void files();
    void nameInAnOldEncoding();
    void folderInAClosedOne();
    void languagesDiffer();
    void sizes();

private:
    static void languages();
    bool load(const QString &language);

    QTranslator m_translator;
};

void TestAppErrors::languages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en";
    QTest::newRow("Russian") << "ru";
}

bool TestAppErrors::load(const QString &language)
{
    QCoreApplication::removeTranslator(&m_translator);
    return m_translator.load(QStringLiteral(TRIVEX_CATALOGUE_DIR "/trivex-app_") + language)
        && QCoreApplication::installTranslator(&m_translator);
}

void TestAppErrors::init()
{
    const bool isInLanguages =
        QTest::currentDataTag() && qstrcmp(QTest::currentTestFunction(), "fitThePurpose") != 0;
    if (isInLanguages) {
        QFETCH(QString, language);
        QVERIFY2(load(language), qPrintable(language));
    }
}

void TestAppErrors::cleanup()
{
    QCoreApplication::removeTranslator(&m_translator);
}

void TestAppErrors::tokenErrors_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("purpose");
    for (const char *language : {"en", "ru"}) {
        for (int purpose = int(Purpose::Sign); purpose <= int(Purpose::Initialise); ++purpose) {
            QTest::addRow("%s, %d", language, purpose) << QString::fromLatin1(language) << purpose;
        }
    }
}

void TestAppErrors::tokenErrors()
{
    QFETCH(int, purpose);
    QSet<QString> causes;
    for (int kind = TokenError::WrongPin; kind <= TokenError::DeviceFailure; ++kind) {
        TokenError error;
        error.purpose = Purpose(purpose);
        error.kind = TokenError::Kind(kind);
        const QString cause = TokenErrors::causeOf(error);
        const QString advice = TokenErrors::adviceOf(error);
        QVERIFY2(isSentence(cause), qPrintable(QString::number(kind) + cause));
        QVERIFY2(isSentence(advice), qPrintable(QString::number(kind) + advice));
        QVERIFY2(cause != advice && !causes.contains(cause), qPrintable(cause));
        causes += cause;
    }
}

/// A next step that belongs to one operation is told after no other.
void TestAppErrors::fitThePurpose_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("advice");
    QTest::addColumn<QVector<Purpose>>("purposes");
    QTest::newRow("another algorithm is for those who make keys")
        << int(TokenError::NotSupported) << QStringLiteral("trivex-app-advice-unsupported")
        << QVector<Purpose>{Purpose::Generate};
    QTest::newRow("no algorithm is chosen to write, sign or decrypt")
        << int(TokenError::DataRefused) << QStringLiteral("trivex-app-advice-unsupported")
        << QVector<Purpose>{Purpose::Generate};
    QTest::newRow("another key is no help to one that is written")
        << int(TokenError::DataRefused) << QStringLiteral("trivex-app-advice-cannot-write")
        << QVector<Purpose>{Purpose::Write};
    QTest::newRow("only a removal has removed nothing")
        << int(TokenError::KeyAmbiguous) << QStringLiteral("trivex-app-advice-key-ambiguous")
        << QVector<Purpose>{Purpose::Remove};
}

void TestAppErrors::fitThePurpose()
{
    QFETCH(int, kind);
    QFETCH(QString, advice);
    QFETCH(QVector<Purpose>, purposes);
    for (int purpose = int(Purpose::Sign); purpose <= int(Purpose::Initialise); ++purpose) {
        TokenError error;
        error.kind = TokenError::Kind(kind);
        error.purpose = Purpose(purpose);
        QCOMPARE(TokenErrors::adviceOf(error) == qtTrId(qPrintable(advice)),
                 purposes.contains(error.purpose));
    }
}

void TestAppErrors::files()
{
    const QTemporaryDir directory;
    const auto make = [&](const char *name, qint64 size) {
        QFile file(directory.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
            qWarning("%s could not be made", name);
        return file.fileName();
    };
    const Files files;
    const QStringList reasons = {
        files.whyNotRead(directory.filePath(QStringLiteral("missing"))),
        files.whyNotRead(directory.path()),
        files.whyNotRead(make("empty", 0)),
        files.whyNotRead(make("sparse", qint64(3) << 30)),
        files.whyNotRead(make("other", 10)),
        files.whyNotWritten(directory.filePath(QStringLiteral("missing"))),
        files.whyNotWritten(directory.path()),
    };
    for (const QString &reason : reasons) {
        QVERIFY2(isSentence(reason), qPrintable(reason));
        QVERIFY2(sentences(reason) >= 2, qPrintable(reason)); // what, and what to do
    }
    QCOMPARE(QSet<QString>(reasons.cbegin(), reasons.cend()).size(), reasons.size());
}

/// A name that is no UTF-8, as old archives bring them: Qt can't name such a file at all.
void TestAppErrors::nameInAnOldEncoding()
{
    const QTemporaryDir directory;
    const QByteArray raw = QFile::encodeName(directory.path()) + "/\xcf\xe8\xf1\xfc\xec\xee.crt";
    const int file = ::open(raw.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    QVERIFY(file >= 0);
    ::close(file);
    const QString path = QFile::decodeName(raw);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(Files().whyNotRead(path), qtTrId("trivex-app-read-name"));
    QVERIFY(::unlink(raw.constData()) == 0);
}

/// Where a folder would have to be made first, the one above it says why it was not.
void TestAppErrors::folderInAClosedOne()
{
    const QTemporaryDir directory;
    QVERIFY(QFile::setPermissions(
        directory.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
    // The superuser may write everywhere.
    constexpr uid_t Nobody = 65534;
    const bool isRoot = ::geteuid() == 0;
    if (isRoot)
        QVERIFY(::setresuid(Nobody, Nobody, 0) == 0);
    const QString reason =
        Files().whyNotWritten(directory.filePath(QStringLiteral("below/CertificateRequest")));
    if (isRoot)
        QVERIFY(::setresuid(0, 0, 0) == 0);
    QVERIFY(QFile::setPermissions(directory.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(reason, qtTrId("trivex-app-write-denied"));
}

void TestAppErrors::languagesDiffer()
{
    for (int kind = TokenError::WrongPin; kind <= TokenError::DeviceFailure; ++kind) {
        TokenError error;
        error.kind = TokenError::Kind(kind);
        QVERIFY(load(QStringLiteral("en")));
        const QString cause = TokenErrors::causeOf(error);
        const QString advice = TokenErrors::adviceOf(error);
        QVERIFY(load(QStringLiteral("ru")));
        QVERIFY2(TokenErrors::causeOf(error) != cause, qPrintable(cause));
        QVERIFY2(TokenErrors::adviceOf(error) != advice, qPrintable(advice));
    }
}

void TestAppErrors::sizes()
{
    const QLocale before;
    const Texts texts;
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
    QVERIFY(load(QStringLiteral("ru")));
    QCOMPARE(texts.size(1), QStringLiteral("1 байт"));
    QCOMPARE(texts.size(2), QStringLiteral("2 байта"));
    QCOMPARE(texts.size(878), QStringLiteral("878 байт"));
    QCOMPARE(texts.size(1536), QStringLiteral("1,50 кБ"));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    QVERIFY(load(QStringLiteral("en")));
    QCOMPARE(texts.size(1), QStringLiteral("1 byte"));
    QCOMPARE(texts.size(878), QStringLiteral("878 bytes"));
    QLocale::setDefault(before);
}

QTEST_GUILESS_MAIN(TestAppErrors)
#include "tst_app_errors.moc"
