// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificatemodel.h"
#include "qca/base/searchtext.h"
#include "tests/certificates/countingsource.h"
#include "tests/support/marktranslator.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QRegExp>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

using TrivexTest::CountingSource;
using TrivexTest::names;
using TrivexTest::systemRows;

namespace {

using Row = CountingSource::Row;

/// Searches every row at every change; what the model's result must equal.
class PlainSearch {
public:
    QStringList texts(const CountingSource &source, const QString &pattern, int type) const
    {
        QStringList found;
        for (const Row &row : source.rows()) {
            const bool hit = row.name.contains(pattern, Qt::CaseInsensitive)
                || row.issuer.contains(pattern, Qt::CaseInsensitive);
            if (row.type == type && hit)
                found << row.name;
        }
        return found;
    }
};

QString randomText(QRandomGenerator &random, int length)
{
    static const QString letters = QStringLiteral("абвгдАБВГДabcABC12 .*(ёЁшШ");
    QString text;
    for (int i = 0; i < length; ++i)
        text += letters.at(random.bounded(letters.size()));
    return text;
}

Row randomRow(QRandomGenerator &random)
{
    return {randomText(random, 8), randomText(random, 6), random.bounded(4) ? 0 : 5, {}};
}

/// Tells which role of a row has changed, as the stores do.
class RenamingSource : public CountingSource {
public:
    void rename(int position, const QString &name)
    {
        QVector<Row> changed = rows();
        changed[position].name = name;
        setRows(changed);
        Q_EMIT dataChanged(index(position), index(position), {NameRole});
    }
};

} // namespace

class TestCertificateModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void construction();
    void typingAndDeleting();
    void replacing();
    void literalText();
    void unnamedRows();
    void setterSignals();
    void unknownRolesAndNoSource();
    void rolesShowWithNextPattern();
    void sourceChangesWhileSearching();
    void followsSource();
    void randomEdits();
    void sortKeysAgreeWithLocale();
    void foldingAgreesWithRegExp();
    void foldingIsLetterByLetter();
    void rowsComeDuringASearch();
    void renamedRowMoves();

private:
    QCA::Initializer m_qca;
};

void TestCertificateModel::initTestCase()
{
    QLocale::setDefault(QLocale(QStringLiteral("ru_RU"))); // before the first comparison
}

void TestCertificateModel::construction()
{
    CertificateModel model;
    QCOMPARE(model.filterRole(), 0);
    QCOMPARE(model.sortColumn(), 0);
    QCOMPARE(model.sortOrder(), Qt::AscendingOrder);
    QCOMPARE(model.sortCaseSensitivity(), Qt::CaseInsensitive);
    QCOMPARE(model.pattern(), QString());
    QVERIFY(model.searchRoles().isEmpty());
}

void TestCertificateModel::typingAndDeleting()
{
    CountingSource source;
    source.reset(systemRows({QStringLiteral("Иванов"), QStringLiteral("Ильин"),
                             QStringLiteral("Петров"), QStringLiteral("xyz")}));
    CertificateModel model; // no tester: it reads
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name"), QStringLiteral("issuer")});
    QCOMPARE(model.rowCount(), 4);
    model.setPattern(QStringLiteral("и"));
    QCOMPARE(names(model), QStringList({QStringLiteral("Иванов"), QStringLiteral("Ильин")}));
    source.takeReads();
    model.setPattern(QStringLiteral("ив"));
    QVERIFY2(source.takeReads() <= 2 * 2, "reads rows that never matched");
    QCOMPARE(names(model), QStringList({QStringLiteral("Иванов")}));
    model.setPattern(QStringLiteral("и"));
    QCOMPARE(names(model), QStringList({QStringLiteral("Иванов"), QStringLiteral("Ильин")}));
    model.setPattern(QString());
    QCOMPARE(model.rowCount(), 4);
}

void TestCertificateModel::replacing()
{
    CountingSource source;
    source.reset(systemRows({QStringLiteral("alpha"), QStringLiteral("beta")}));
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("alp"));
    QCOMPARE(names(model), QStringList({QStringLiteral("alpha")}));
    model.setPattern(QStringLiteral("BET"));
    QCOMPARE(names(model), QStringList({QStringLiteral("beta")}));
    model.setPattern(QStringLiteral("none"));
    QCOMPARE(model.rowCount(), 0);
}

void TestCertificateModel::literalText()
{
    CountingSource source;
    source.reset(systemRows({QStringLiteral("a(b"), QStringLiteral("a*b"), QStringLiteral("ab"),
                             QStringLiteral("[a]")}));
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("("));
    QCOMPARE(names(model), QStringList({QStringLiteral("a(b")}));
    model.setPattern(QStringLiteral("a*"));
    QCOMPARE(names(model), QStringList({QStringLiteral("a*b")}));
    model.setPattern(QStringLiteral("["));
    QCOMPARE(names(model), QStringList({QStringLiteral("[a]")}));
}

void TestCertificateModel::unnamedRows()
{
    const TrivexTest::MarkTranslator marks;
    CountingSource source;
    source.reset(systemRows(
        {QStringLiteral("zebra"), QString(), QStringLiteral("ruby"), QStringLiteral("apple")}));
    CertificateModel model;
    model.setSourceModel(&source);
    // As "tr:plugin-la-unnamed"; the bare identifier would be before "ruby".
    QCOMPARE(names(model),
             QStringList({QStringLiteral("apple"), QStringLiteral("ruby"), QString(),
                          QStringLiteral("zebra")}));
}

void TestCertificateModel::setterSignals()
{
    CertificateModel model;
    QSignalSpy pattern(&model, &CertificateModel::patternChanged);
    QSignalSpy roles(&model, &CertificateModel::searchRolesChanged);
    model.setPattern(QString());
    model.setSearchRoles({});
    QCOMPARE(pattern.count() + roles.count(), 0);
    model.setPattern(QStringLiteral("a"));
    model.setPattern(QStringLiteral("a"));
    QCOMPARE(pattern.count(), 1);
    QCOMPARE(model.pattern(), QStringLiteral("a"));
    QCOMPARE(model.filterRegExp(),
             QRegExp(QStringLiteral("a"), Qt::CaseInsensitive, QRegExp::FixedString));
    model.setSearchRoles({QStringLiteral("name")});
    model.setSearchRoles({QStringLiteral("name")});
    QCOMPARE(roles.count(), 1);
}

void TestCertificateModel::unknownRolesAndNoSource()
{
    CertificateModel model;
    model.setSearchRoles({QStringLiteral("name")});
    QTest::ignoreMessage(QtWarningMsg, "No matching role in model: \"name\"");
    model.setPattern(QStringLiteral("a"));
    CountingSource source;
    source.reset(systemRows({QStringLiteral("a"), QStringLiteral("b")}));
    model.setSourceModel(&source);
    QCOMPARE(names(model), QStringList({QStringLiteral("a")}));
    model.setSearchRoles({QStringLiteral("no such role"), QStringLiteral("name")});
    model.setPattern(QStringLiteral("b"));
    QCOMPARE(names(model), QStringList({QStringLiteral("b")}));
}

void TestCertificateModel::rolesShowWithNextPattern()
{
    CountingSource source;
    source.reset({{QStringLiteral("one"), QStringLiteral("ca"), 0, {}},
                  {QStringLiteral("cat"), QStringLiteral("zz"), 0, {}}});
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("c"));
    QCOMPARE(names(model), QStringList({QStringLiteral("cat")}));
    model.setSearchRoles({QStringLiteral("issuer")});
    QCOMPARE(names(model), QStringList({QStringLiteral("cat")}));
    model.setPattern(QStringLiteral("ca"));
    QCOMPARE(names(model), QStringList({QStringLiteral("one")}));
}

void TestCertificateModel::sourceChangesWhileSearching()
{
    CountingSource source;
    source.reset(systemRows({QStringLiteral("cat"), QStringLiteral("dog")}));
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("ca"));
    source.insert(0, systemRows({QStringLiteral("cap"), QStringLiteral("dot")}));
    QCOMPARE(names(model), QStringList({QStringLiteral("cap"), QStringLiteral("cat")}));
    source.change(1, {QStringLiteral("can"), {}, 0, {}});
    QCOMPARE(names(model),
             QStringList({QStringLiteral("can"), QStringLiteral("cap"), QStringLiteral("cat")}));
    source.remove(0, 2);
    QCOMPARE(names(model), QStringList({QStringLiteral("cat")}));
    source.reset(systemRows({QStringLiteral("x"), QStringLiteral("cab")}));
    QCOMPARE(names(model), QStringList({QStringLiteral("cab")}));
}

void TestCertificateModel::followsSource()
{
    auto source = std::make_unique<CountingSource>();
    source->reset(systemRows({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    CertificateModel model;
    QAbstractItemModelTester tester(&model);
    model.setSourceModel(source.get());
    model.setSearchRoles({QStringLiteral("name")});
    model.setPattern(QStringLiteral("b"));
    source->moveRow(1, 3);
    source->moveRow(2, 0);
    QCOMPARE(names(model), QStringList({QStringLiteral("b")}));
    source.reset();
    QCOMPARE(model.rowCount(), 0);
    CountingSource next;
    next.reset(systemRows({QStringLiteral("abc"), QStringLiteral("d")}));
    model.setSourceModel(&next);
    QCOMPARE(names(model), QStringList({QStringLiteral("abc")}));
}

void TestCertificateModel::randomEdits()
{
    QRandomGenerator random(42);
    CountingSource source;
    QVector<Row> rows;
    for (int i = 0; i < 10000; ++i)
        rows.append(randomRow(random));
    source.reset(rows);
    CertificateModel model;
    model.setSourceModel(&source);
    model.setSearchRoles({QStringLiteral("name"), QStringLiteral("issuer")});
    const PlainSearch plain;
    QString pattern;
    for (int step = 0; step < 1000; ++step) {
        const int kind = random.bounded(10);
        if (kind < 4)
            pattern += randomText(random, 1);
        else if (kind < 7)
            pattern.chop(1);
        else if (kind == 7)
            pattern = randomText(random, 2);
        else if (kind == 8)
            source.change(random.bounded(source.rowCount()), randomRow(random));
        else
            source.insert(random.bounded(source.rowCount()), {randomRow(random)});
        if (step % 37 == 0)
            source.remove(random.bounded(source.rowCount() - 3), 3);
        if (pattern.size() > 3)
            pattern.clear();
        model.setPattern(pattern);
        QStringList wanted = plain.texts(source, pattern, 0);
        QCOMPARE(model.rowCount(), wanted.size());
        if (step % 20 != 0)
            continue;
        // The order of equal names is the proxy's business.
        QStringList found = names(model);
        for (int i = 1; i < found.size(); ++i)
            QVERIFY(QString::localeAwareCompare(found.at(i - 1).toLower(), found.at(i).toLower())
                    <= 0);
        std::sort(found.begin(), found.end());
        std::sort(wanted.begin(), wanted.end());
        QCOMPARE(found, wanted);
    }
}

void TestCertificateModel::sortKeysAgreeWithLocale()
{
    QVERIFY(QString::localeAwareCompare(QStringLiteral("ё"), QStringLiteral("я")) < 0);
    QRandomGenerator random(7);
    CountingSource source;
    QVector<Row> rows;
    for (int i = 0; i < 1000; ++i)
        rows.append({randomText(random, 1 + random.bounded(4)), {}, 0, {}});
    source.reset(rows);
    CertificateModel model;
    model.setSourceModel(&source);
    const QStringList shown = names(model);
    QCOMPARE(shown.size(), rows.size());
    for (int i = 1; i < shown.size(); ++i)
        QVERIFY(QString::localeAwareCompare(shown.at(i - 1).toLower(), shown.at(i).toLower()) <= 0);
}

void TestCertificateModel::foldingAgreesWithRegExp()
{
    static const QString letters = QStringLiteral("aAäÄßiIσςΣяЯёЁкКfﬀ1-(");
    QRandomGenerator random(3);
    for (int i = 0; i < 20000; ++i) {
        QString text;
        QString pattern;
        for (int k = 0; k < 5; ++k)
            text += letters.at(random.bounded(letters.size()));
        for (int k = 0; k < 1 + random.bounded(2); ++k)
            pattern += letters.at(random.bounded(letters.size()));
        const QRegExp filter(pattern, Qt::CaseInsensitive, QRegExp::FixedString);
        const bool wanted = text.toLower().indexOf(filter) >= 0;
        const bool found = Trivex::foldedText(text).contains(Trivex::foldedText(pattern));
        QVERIFY2(found == wanted, qPrintable(text + QStringLiteral(" / ") + pattern));
    }
}

void TestCertificateModel::foldingIsLetterByLetter()
{
    for (uint point = 1; point <= 0x1ffff; ++point) {
        if (QChar::isSurrogate(point))
            continue;
        const QString letter = QString::fromUcs4(&point, 1);
        QString wanted;
        for (const uint lower : letter.toLower().toUcs4()) {
            const uint plain = QChar::toCaseFolded(lower);
            wanted += QString::fromUcs4(&plain, 1);
        }
        // Among others, whose way must not depend on it.
        const QString text = QLatin1Char('A') + letter + QStringLiteral("Я");
        const QString folded = QLatin1Char('a') + wanted + QStringLiteral("я");
        if (Trivex::foldedText(text) != folded)
            QFAIL(qPrintable(QString::number(point, 16)));
    }
    QCOMPARE(Trivex::foldedText(QString(QChar(0xd83d)) + QLatin1Char('A')),
             QString(QChar(QChar::ReplacementCharacter)) + QLatin1Char('a')); // half a pair
    QVERIFY(Trivex::foldedText(QString()).isEmpty());
}

void TestCertificateModel::rowsComeDuringASearch()
{
    QRandomGenerator random(5);
    for (const int count : {3, 500}) {
        CountingSource source;
        source.reset(systemRows({QStringLiteral("cat"), QStringLiteral("dog")}));
        CertificateModel model;
        QAbstractItemModelTester tester(&model);
        model.setSourceModel(&source);
        model.setSearchRoles({QStringLiteral("name")});
        model.setPattern(QStringLiteral("а"));
        QCOMPARE(model.rowCount(), 0);
        for (int i = 0; i < count; ++i)
            source.append({QStringLiteral("а%1").arg(random.bounded(1000)), {}, 0, {}});
        source.change(0, {QStringLiteral("а"), {}, 0, {}});
        QCOMPARE(model.rowCount(), count + 1);
        source.append({QStringLiteral("а"), {}, 0, {}});
        QCOMPARE(model.rowCount(), count + 2);
        model.setPattern(QString());
        QCOMPARE(model.rowCount(), count + 3);
    }
}

/// What is searched is one thing, what rows are sorted by another.
void TestCertificateModel::renamedRowMoves()
{
    RenamingSource source;
    source.reset(systemRows({QStringLiteral("cat"), QStringLiteral("dog"), QStringLiteral("elk")}));
    CertificateModel model;
    model.setSearchRoles({QStringLiteral("issuer")});
    model.setSourceModel(&source);
    QCOMPARE(names(model).first(), QStringLiteral("cat"));
    source.rename(0, QStringLiteral("zebra"));
    QCOMPARE(names(model),
             QStringList({QStringLiteral("dog"), QStringLiteral("elk"), QStringLiteral("zebra")}));
}

QTEST_GUILESS_MAIN(TestCertificateModel)
#include "tst_certificatemodel.moc"
