// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "tests/app/rowsource.h"
#include "tools/sectionedmodel.h"
#include "tools/texts.h"

#include <QtTest>

using namespace Trivex;

namespace {

/// Rows of the first category.
class NamedRows : public TrivexTest::RowSource {
public:
    explicit NamedRows(const QStringList &names)
    {
        for (const QString &name : names) {
            auto *certificate = new TrivexTest::StandInCertificate;
            certificate->name = name;
            add(name, certificate)->setData(0, TypeRole);
        }
    }
};

/// The two kinds of list over the same rows.
class Lists {
public:
    explicit Lists(const QStringList &names)
        : m_source(names)
    {
        m_entries.setSourceModel(&m_source);
        m_category.setSourceModel(&m_source);
        m_category.setSearchRoles({QStringLiteral("name")});
        m_page.setEntries(&m_entries);
    }
    void search(const QString &pattern)
    {
        m_category.setPattern(pattern);
        m_page.setPattern(pattern);
        QCoreApplication::processEvents(); // the page changes once for a turn of the loop
    }
    QStringList inCategory() const { return namesIn(m_category); }
    QStringList onTokenPage() const { return namesIn(m_page); }

private:
    static QStringList namesIn(const QAbstractItemModel &model)
    {
        const int role = model.roleNames().key("name");
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names += model.index(row, 0).data(role).toString();
        names.sort();
        return names;
    }

    NamedRows m_source;
    EntryModel m_entries;
    CertificateModel m_category;
    SectionedModel m_page;
};

} // namespace

/// Categories, pages of tokens and the marks in their rows find the same.
class TestSearch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void finds_data();
    void finds();
    void allAgree();
    void marksWholeLetters();
};

void TestSearch::finds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *what, const char *name, const char *pattern, bool isFound) {
        QTest::newRow(what) << QString::fromUtf8(name) << QString::fromUtf8(pattern) << isFound;
    };
    row("final sigma typed", "ΟΔΟΣ", "οδος", true);
    row("final sigma in the name", "Οδος", "ΟΔΟΣ", true);
    row("sigma within", "Οδυσσεύς", "ΟΔΥΣΣΕΎΣ", true);
    row("dotless i", "Işık", "şık", true);
    row("dotless i is no i", "Işık", "şik", false);
    row("capital i without a dot", "Işık", "IŞI", false);
    row("capital i with a dot", "İzmir", "i", true);
    row("sharp s", "STRAẞE", "straße", true);
    row("sharp s is no ss", "Straße", "STRASSE", false);
    row("composed accent", "José", "JOSÉ", true);
    row("accent apart", "Jose\u0301", "JOSE\u0301", true);
    row("accent composed and apart", "José", "Jose\u0301", false);
    row("accent apart and composed", "Jose\u0301", "José", false);
    row("beyond the first plane", "𐐀𐐁", "𐐩", true);
    row("Cyrillic", "ЁЖИК", "ёж", true);
}

void TestSearch::finds()
{
    QFETCH(QString, name);
    QFETCH(QString, pattern);
    QFETCH(bool, isFound);
    Lists lists({name});
    lists.search(pattern);
    QCOMPARE(lists.inCategory().size(), isFound ? 1 : 0);
    QCOMPARE(lists.onTokenPage().size(), isFound ? 1 : 0);
    QCOMPARE(Texts().marked(name, pattern, QStringLiteral("red")).contains(QLatin1String("<b>")),
             isFound);
}

void TestSearch::allAgree()
{
    const QStringList letters = QString::fromUtf8("a A ä Ä ß ẞ s i I İ ı σ ς Σ é e e\u0301 ﬀ ǅ 𐐀 𐐨")
                                    .split(QLatin1Char(' '));
    QStringList names;
    for (const QString &first : letters) {
        for (const QString &second : letters)
            names += first + second;
    }
    Lists lists(names);
    for (const QString &pattern : letters + names.mid(40, 60)) {
        lists.search(pattern);
        QCOMPARE(lists.onTokenPage(), lists.inCategory());
        QVERIFY(!lists.inCategory().isEmpty());
        for (const QString &name : qAsConst(names)) {
            const bool isMarked = Texts().marked(name, pattern, {}).contains(QLatin1String("<b>"));
            QVERIFY2(isMarked == lists.inCategory().contains(name),
                     qPrintable(name + QLatin1Char('/') + pattern));
        }
    }
}

void TestSearch::marksWholeLetters()
{
    const QString marked =
        Texts().marked(QString::fromUtf8("İzmir <i>"), QStringLiteral("I"), QStringLiteral("red"));
    QCOMPARE(marked,
             QString::fromUtf8("<b><u><font color=\"red\">İ</font></u></b>zm"
                               "<b><u><font color=\"red\">i</font></u></b>r &lt;"
                               "<b><u><font color=\"red\">i</font></u></b>&gt;"));
}

QTEST_GUILESS_MAIN(TestSearch)
#include "tst_search.moc"
