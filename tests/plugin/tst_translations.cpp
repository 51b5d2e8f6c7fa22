// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "plugin/apptranslator.h"

#include <QFile>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QtTest>

class TestTranslations : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void neither();
    void englishOnly();
    void localeWins();
    void englishFillsTheGaps();
    void everyEngineHasItsPair();

private:
    void provide(const char *name, const char *as = nullptr);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QQmlEngine> m_engine;
};

void TestTranslations::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_engine = std::make_unique<QQmlEngine>();
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU")));
}

void TestTranslations::cleanup()
{
    m_engine.reset();
    QLocale::setDefault(QLocale::c());
}

void TestTranslations::provide(const char *name, const char *as)
{
    QVERIFY(QFile::copy(QStringLiteral(TRIVEX_CATALOGUE_DIR "/") + QLatin1String(name),
                        m_directory->filePath(QLatin1String(as ? as : name))));
}

void TestTranslations::neither()
{
    installTranslators(m_engine.get(), m_directory->path());
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("trivex-p-la-issuer"));
    installTranslators(m_engine.get(), m_directory->filePath(QStringLiteral("missing")));
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("trivex-p-la-issuer"));
}

void TestTranslations::englishOnly()
{
    provide("trivex-qml-plugin_eng_en.qm");
    installTranslators(m_engine.get(), m_directory->path());
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("Issuer"));
    m_engine.reset(); // takes the translators along
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("trivex-p-la-issuer"));
}

void TestTranslations::localeWins()
{
    provide("trivex-qml-plugin_eng_en.qm");
    provide("trivex-qml-plugin-ru.qm");
    installTranslators(m_engine.get(), m_directory->path());
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("Издатель"));
    QCOMPARE(qtTrId("trivex-p-la-no-such"), QStringLiteral("trivex-p-la-no-such"));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    QQmlEngine english;
    installTranslators(&english, m_directory->path());
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("Issuer"));
}

void TestTranslations::englishFillsTheGaps()
{
    provide("trivex-qml-plugin_eng_en.qm");
    // A Russian catalogue that knows none of the plugin's identifiers.
    provide("trivex-app_ru.qm", "trivex-qml-plugin-ru.qm");
    installTranslators(m_engine.get(), m_directory->path());
    QCOMPARE(qtTrId("trivex-app-about-roots"),
             QStringLiteral("Корневые сертификаты, которые вы добавили сами."));
    QCOMPARE(qtTrId("trivex-p-la-issuer"), QStringLiteral("Issuer"));
}

void TestTranslations::everyEngineHasItsPair()
{
    QQmlEngine second;
    installTranslators(m_engine.get(), m_directory->path());
    installTranslators(&second, m_directory->path());
    QCOMPARE(m_engine->findChildren<AppTranslator *>().size(), 2);
    QCOMPARE(second.findChildren<AppTranslator *>().size(), 2);
}

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
