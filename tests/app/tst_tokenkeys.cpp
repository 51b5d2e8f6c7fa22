// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/savedrequest.h"
#include "qca/keys/keytypes.h"
#include "qca/tokens/tokenregistry.h"
#include "tests/support/processortime.h"
#include "tools/keychoicemodel.h"
#include "tools/keykindmodel.h"
#include "tools/keyrequest.h"
#include "tools/rowlines.h"
#include "tools/rowselection.h"
#include "tools/tokenadmin.h"
#include "tools/tokenfactlist.h"
#include "tools/tokenkeyinfo.h"
#include "tools/tokenkeywork.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QtTest>

using namespace Trivex;
using TrivexTest::processorTime;

namespace {

enum FakeRole { CertificateRole = Qt::UserRole + 3 };

/// A saved request for a key.
class FakeRequest : public QObject, public SavedRequest {
    Q_OBJECT
    Q_INTERFACES(Trivex::SavedRequest)
    Q_PROPERTY(QString commonName MEMBER name CONSTANT)
public:
    QString requestFile() const override { return QStringLiteral("/requests/") + name; }
    QByteArray requestKeyInfo() const override { return info; }
    Trivex::RequestedFields requestedFields() const override { return {}; }
    void setRequestedFields(const Trivex::RequestedFields &) override { }
    void restoreRequestedFields() override { }
    EditLoss editLoss() const override { return EditLoss::None; }
    bool hasRequestKey() const override { return true; }

    QString name;
    QByteArray info;
};

class FakeRequests : public QStandardItemModel {
    Q_OBJECT
public:
    FakeRequests() { setItemRoleNames({{CertificateRole, "certificate"}}); }
    void add(const QString &name, const QByteArray &info)
    {
        auto *request = new FakeRequest;
        request->setParent(this);
        request->name = name;
        request->info = info;
        auto *item = new QStandardItem;
        item->setData(QVariant::fromValue<QObject *>(request), CertificateRole);
        appendRow(item);
    }
};

TokenKeyFacts key(const char *id, const char *label = "key", const char *entryId = "")
{
    TokenKeyFacts facts;
    facts.id = QLatin1String(id);
    facts.label = QString::fromUtf8(label);
    facts.entryId = QLatin1String(entryId);
    facts.keyType = RsaKey;
    facts.bits = 2048;
    facts.tokenId = QByteArray("\x0a\xf3");
    facts.publicInfo = QByteArray("public half of ") + id;
    return facts;
}

QStringList names(const QAbstractItemModel &model, int role = TokenKeyModel::NameRole)
{
    QStringList result;
    for (int i = 0; i < model.rowCount(); ++i)
        result += model.index(i, 0).data(role).toString();
    return result;
}

QString joined(const QAbstractItemModel &model, int role = TokenKeyModel::NameRole)
{
    return names(model, role).join(QLatin1Char('|'));
}

} // namespace

/// The keys without a certificate as rows, and the facts of a token in words; without a token.
class TestTokenKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void rowsFollowTheTokens();
    void rowsThatStay();
    void wordsOfAKey();
    void namesOfStrangers();
    void requestsThatWait();
    void certificateTakesOver();
    void listOfOneToken();
    void keysOfTheListGoAtOnce();
    void manyRows();
    void linesOfKeysThatMove();
    void keyIsFollowed();
    void workWithoutTokens();
    void pinsThatAreEmpty_data();
    void pinsThatAreEmpty();
    void triesInWords_data();
    void triesInWords();
    void factsInWords();
    void offersWhatIsMade();
    void choosesAmongKeysThatSign();

private:
    void publish(const char *storeId, const QVector<TokenKeyFacts> &keys, bool present = true);

    QCA::Initializer m_initializer;
};

void TestTokenKeys::publish(const char *storeId, const QVector<TokenKeyFacts> &keys, bool present)
{
    TokenStatus status;
    status.keyStoreId = QLatin1String(storeId);
    status.name = QStringLiteral("Token ") + status.keyStoreId;
    status.present = present;
    status.keyFacts = keys;
    publishTokenStatus(status, nextStatusNumber());
}

void TestTokenKeys::cleanup()
{
    for (const char *id : {"a", "b"}) {
        TokenStatus gone;
        gone.keyStoreId = QLatin1String(id);
        publishTokenStatus(gone, nextStatusNumber());
    }
}

void TestTokenKeys::rowsFollowTheTokens()
{
    publish("a", {key("1", "one"), key("2", "two"), key("3", "three", "entry")});
    TokenKeyModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    // A key with a certificate is none of these.
    QCOMPARE(joined(model), QStringLiteral("one|two"));
    publish("b", {key("1", "b one")});
    QCOMPARE(joined(model), QStringLiteral("one|two|b one"));
    publish("a", {key("1", "one"), key("4", "four"), key("2", "two")});
    QCOMPARE(joined(model), QStringLiteral("one|two|four|b one"));
    QCOMPARE(model.countInStore(QStringLiteral("a")), 3);
    publish("a", {key("4", "four")});
    QCOMPARE(joined(model), QStringLiteral("four|b one"));
    // Taken out: nothing of it is left, whatever was known of it.
    publish("b", {key("1", "b one")}, false);
    QCOMPARE(joined(model), QStringLiteral("four"));
    publish("a", {});
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.rowCount(model.index(0)), 0);
}

/// A login changes what is known of keys, and not which rows there are.
void TestTokenKeys::rowsThatStay()
{
    publish("a", {key("1"), key("2")});
    TokenKeyModel model;
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    TokenKeyFacts known = key("2");
    known.usesKnown = true;
    known.uses = TokenKeyFacts::Signs;
    publish("a", {key("1"), known});
    QCOMPARE(removed.count() + inserted.count(), 0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toModelIndex().row(), 1);
    publish("a", {key("1"), known});
    QCOMPARE(changed.count(), 1);
}

void TestTokenKeys::wordsOfAKey()
{
    TokenKeyFacts facts = key("1");
    QCOMPARE(TokenKeyModel::usesText(facts), QString());
    facts.usesKnown = true;
    QCOMPARE(TokenKeyModel::usesText(facts), QStringLiteral("trivex-app-key-uses-nothing"));
    facts.uses = TokenKeyFacts::Signs | TokenKeyFacts::Derives;
    QCOMPARE(TokenKeyModel::usesText(facts),
             QStringLiteral("trivex-app-key-signs, trivex-app-key-derives"));
    QCOMPARE(TokenKeyModel::originText(facts), QString());
    facts.origin = TokenKeyFacts::MadeHere;
    QCOMPARE(TokenKeyModel::originText(facts), QStringLiteral("trivex-app-key-made-here"));
    facts.bits = 0;
    facts.keyType = Gost2012Key256;
    QCOMPARE(TokenKeyModel::kindText(facts), QStringLiteral("GOST R 34.10-2012"));
    facts.keyType = 99;
    QCOMPARE(TokenKeyModel::kindText(facts), QStringLiteral("trivex-app-key-other-kind"));
}

void TestTokenKeys::namesOfStrangers()
{
    publish("a", {key("1", "two\nlines \xe2\x80\xae"), key("2", "  "), key("3", "")});
    TokenKeyModel model;
    const QStringList shown = names(model);
    QVERIFY(!shown.at(0).contains(QLatin1Char('\n')));
    QVERIFY(!shown.at(0).contains(QChar(0x202e)));
    QCOMPARE(shown.at(1), QStringLiteral("trivex-app-key-unnamed"));
    QCOMPARE(shown.at(2), QStringLiteral("trivex-app-key-unnamed"));
}

void TestTokenKeys::requestsThatWait()
{
    publish("a", {key("1"), key("2")});
    FakeRequests requests;
    TokenKeyModel model;
    model.setRequests(&requests);
    QCOMPARE(joined(model, TokenKeyModel::RequestRole), QStringLiteral("|"));
    requests.add(QStringLiteral("Petrova"), key("2").publicInfo);
    requests.add(QStringLiteral("Nobody"), QByteArray());
    QTRY_COMPARE(joined(model, TokenKeyModel::RequestRole), QStringLiteral("|Petrova"));
    QCOMPARE(model.index(1).data(TokenKeyModel::RequestIdentityRole).toString(),
             QStringLiteral("/requests/Petrova"));
    // Keys that come later know it, too.
    publish("b", {key("2")});
    QTRY_COMPARE(names(model, TokenKeyModel::RequestRole).last(), QStringLiteral("Petrova"));
    requests.removeRow(0);
    QTRY_COMPARE(joined(model, TokenKeyModel::RequestRole), QStringLiteral("||"));
}

/// The same key by another row.
void TestTokenKeys::certificateTakesOver()
{
    publish("a", {key("1")});
    TokenKeyModel model;
    const QString keyIdentity = model.identityAt(0);
    QCOMPARE(model.heirOf(keyIdentity), QString());
    publish("a", {key("1", "key", "entry")});
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.heirOf(keyIdentity), QStringLiteral("a\nentry"));
    publish("a", {key("1")});
    QCOMPARE(model.heirOf(QStringLiteral("a\nentry")), keyIdentity);
    QCOMPARE(model.rowOfIdentity(keyIdentity), 0);
    QCOMPARE(model.heirOf(QStringLiteral("a\nanother")), QString());
}

void TestTokenKeys::listOfOneToken()
{
    publish("a", {key("1", "beta"), key("2", "alpha")});
    publish("b", {key("3", "gamma")});
    TokenKeyModel keys;
    EntryModel entries;
    QStandardItemModel source;
    source.setItemRoleNames({{Qt::UserRole + 1, "name"}, {Qt::UserRole + 4, "issuer"}});
    entries.setSourceModel(&source);
    SectionedModel list;
    const QAbstractItemModelTester tester(&list,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    list.setEntries(&entries);
    list.setKeys(&keys);
    // No row must come in this time.
    QTest::qWait(20);
    // Beside certificates of everywhere there are none.
    QCOMPARE(list.count(), 0);
    list.setStoreId(QStringLiteral("a"));
    QTRY_COMPARE(list.count(), 2);
    QVERIFY(list.hasKeys());
    QCOMPARE(list.value(0, QStringLiteral("name")).toString(), QStringLiteral("alpha"));
    QCOMPARE(list.value(0, QStringLiteral("issuer")).toString(), QStringLiteral("RSA"));
    QCOMPARE(list.value(0, QStringLiteral("section")).toString(),
             QStringLiteral("trivex-app-keys-bare"));
    QVERIFY(list.value(0, QStringLiteral("isKey")).toBool());
    QCOMPARE(list.value(0, QStringLiteral("storeId")).toString(), QStringLiteral("a"));
    QCOMPARE(list.rowOfIdentity(list.identityAt(1)), 1);
    list.setPattern(QStringLiteral("BET"));
    QTRY_COMPARE(list.count(), 1);
    list.setPattern(QStringLiteral("0a:f3"));
    QTRY_COMPARE(list.count(), 2);
    list.setPattern(QString());
    list.setWantedValidity(1);
    QTRY_COMPARE(list.count(), 0);
    QCOMPARE(list.hiddenCount(), 2);
    list.liftFilters();
    list.setStoreId(QStringLiteral("b"));
    QTRY_COMPARE(list.count(), 1);
    list.setKeys(nullptr);
    QTRY_COMPARE(list.count(), 0);
}

void TestTokenKeys::keysOfTheListGoAtOnce()
{
    publish("a", {key("1", "one"), key("2", "two"), key("3", "three")});
    TokenKeyModel keys;
    EntryModel entries;
    SectionedModel list;
    const QAbstractItemModelTester tester(&list,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    list.setEntries(&entries);
    list.setKeys(&keys);
    list.setStoreId(QStringLiteral("a"));
    QTRY_COMPARE(list.count(), 3);
    RowSelection selection;
    selection.setRows(&list);
    selection.setRow(2);
    QVERIFY(selection.isKey());
    QVERIFY(!selection.certificate());
    QCOMPARE(selection.count(), 1);
    const QString chosen = selection.identity();
    publish("a", {key("2", "two"), key("3", "three")});
    // No turn of the event loop: nothing may be read of a key that has gone.
    QCOMPARE(list.count(), 2);
    QCOMPARE(selection.identity(), chosen);
    QCOMPARE(selection.row(), 1);
    publish("a", {});
    QCOMPARE(list.count(), 0);
    QCOMPARE(selection.row(), -1);
    publish("a", {key("2", "two"), key("5", "five")});
    QTRY_COMPARE(list.count(), 2);
    QCOMPARE(selection.identity(), chosen);
    QCOMPARE(selection.row(), 1);
}

void TestTokenKeys::manyRows()
{
    constexpr int Many = 500;
    QVector<TokenKeyFacts> all;
    for (int i = 0; i < Many; ++i)
        all.append(key(QByteArray::number(i).constData(), "the same name"));
    TokenKeyModel keys;
    EntryModel entries;
    SectionedModel list;
    list.setEntries(&entries);
    list.setKeys(&keys);
    list.setStoreId(QStringLiteral("a"));
    publish("a", all);
    QTRY_COMPARE(list.count(), Many);
    const qint64 before = processorTime();
    publish("a", all.mid(Many / 2));
    QCOMPARE(list.count(), Many - Many / 2);
    publish("a", {});
    QCOMPARE(list.count(), 0);
    const qint64 milliseconds = (processorTime() - before) / 1000000;
    QVERIFY2(milliseconds < 300, qPrintable(QString::number(milliseconds)));
}

/// One goes while they are copied, and those behind it move up.
void TestTokenKeys::linesOfKeysThatMove()
{
    constexpr int Many = RowLines::MostInPortion + 100;
    QVector<TokenKeyFacts> all;
    for (int i = 0; i < Many; ++i)
        all.append(key(QByteArray::number(i).constData(), "the same name"));
    publish("a", all);
    TokenKeyModel keys;
    QStandardItemModel source;
    source.setItemRoleNames({{Qt::UserRole + 1, "name"}});
    EntryModel entries;
    entries.setSourceModel(&source);
    SectionedModel list;
    list.setEntries(&entries);
    list.setKeys(&keys);
    list.setStoreId(QStringLiteral("a"));
    QTRY_COMPARE(list.count(), Many);
    RowSelection selection;
    selection.setRows(&list);
    selection.chooseAll();
    RowLines lines;
    lines.write(&selection);
    QVERIFY(lines.isRunning());
    all.removeLast();
    all.removeFirst();
    publish("a", all);
    QCOMPARE(list.count(), Many - 2);
    QTRY_VERIFY(!lines.isRunning());
    // The first was written before it went.
    QCOMPARE(lines.text().split(QLatin1Char('\n')).size(), Many - 1);
}

void TestTokenKeys::keyIsFollowed()
{
    publish("a", {key("1", "one")});
    TokenKeyModel keys;
    TokenKeyInfo one;
    QSignalSpy changed(&one, &TokenKeyInfo::changed);
    one.setKeys(&keys);
    QVERIFY(!one.present());
    QVERIFY(one.groups().isEmpty());
    one.setIdentity(keys.identityAt(0));
    QVERIFY(one.present());
    QCOMPARE(one.keyId(), QStringLiteral("1"));
    QVERIFY(one.canRequest());
    QVERIFY(one.text().contains(QStringLiteral("0A:F3")));
    TokenKeyFacts hidden = key("1", "one");
    hidden.publicInfo.clear();
    changed.clear();
    publish("a", {hidden});
    QCOMPARE(changed.count(), 1);
    // Without its public half there is nothing to certify.
    QVERIFY(!one.canRequest());
    publish("a", {});
    QVERIFY(!one.present());
    QCOMPARE(one.name(), QString());
}

void TestTokenKeys::workWithoutTokens()
{
    TokenKeyWork work;
    QVERIFY(!work.remove(QStringLiteral("a"), QStringLiteral("1")));
    QVERIFY(!work.show(QStringLiteral("a")));
    QVERIFY(!work.isRunning());
}

void TestTokenKeys::pinsThatAreEmpty_data()
{
    QTest::addColumn<bool>("mayBeEmpty");
    QTest::addColumn<bool>("hasUserPin");
    QTest::addColumn<bool>("needsLogin");
    QTest::addColumn<bool>("pinEmpty");
    QTest::newRow("a PIN like any other") << false << true << true << false;
    QTest::newRow("an empty one is allowed") << true << true << true << false;
    QTest::newRow("an empty one is set") << true << true << false << true;
    QTest::newRow("the administrator's alone is set") << true << false << true << false;
    QTest::newRow("none may be empty") << false << false << true << false;
}

/// Where an empty PIN is the right one, the dialogs can't ask for a longer one.
void TestTokenKeys::pinsThatAreEmpty()
{
    QFETCH(bool, mayBeEmpty);
    QFETCH(bool, hasUserPin);
    QFETCH(bool, needsLogin);
    TokenStatus status;
    status.keyStoreId = QStringLiteral("a");
    status.name = QStringLiteral("Token");
    status.present = true;
    status.pinMayBeEmpty = mayBeEmpty;
    status.pinState = needsLogin && !hasUserPin ? PinState::NotSet : PinState::Normal;
    status.facts.hasUserPin = hasUserPin;
    status.facts.needsLogin = needsLogin;
    publishTokenStatus(status, nextStatusNumber());
    TokenAdmin admin;
    admin.setStoreId(status.keyStoreId);
    QTEST(admin.isPinEmpty(), "pinEmpty");
    QVERIFY(!admin.isOfficerPinEmpty());
    status.officerPinState = PinState::NotSet;
    publishTokenStatus(status, nextStatusNumber());
    QCOMPARE(admin.isOfficerPinEmpty(), mayBeEmpty);
}

void TestTokenKeys::triesInWords_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::newRow("not set") << int(PinState::NotSet) << "trivex-app-tries-not-set";
    QTest::newRow("normal") << int(PinState::Normal) << "trivex-app-tries-all";
    QTest::newRow("low") << int(PinState::CountLow) << "trivex-app-tries-fewer";
    QTest::newRow("final") << int(PinState::FinalTry) << "trivex-app-tries-one";
    QTest::newRow("locked") << int(PinState::Locked) << "trivex-app-tries-none";
}

void TestTokenKeys::triesInWords()
{
    QFETCH(int, state);
    QFETCH(QString, text);
    TokenStatus status;
    status.pinState = PinState(state);
    QCOMPARE(TokenFactList::triesText(status), text);
}

void TestTokenKeys::factsInWords()
{
    TokenStatus status;
    status.keyStoreId = QStringLiteral("a");
    status.name = QStringLiteral("Work\ntoken");
    status.manufacturer = QStringLiteral("Maker");
    status.serial = QStringLiteral("0042");
    status.present = true;
    status.keysHidden = true;
    status.facts.firmware = QStringLiteral("2.6");
    status.keyFacts = {key("1"), key("2", "key", "entry")};
    publishTokenStatus(status, nextStatusNumber());
    TokenFactList facts;
    facts.setStoreId(QStringLiteral("a"));
    QVERIFY(facts.present());
    QVERIFY(facts.keysHidden());
    for (const char *wanted : {"Maker", "0042", "2.6", "trivex-app-token-keys: 2",
                               "trivex-app-keys-bare: 1", "trivex-app-tries-all"})
        QVERIFY2(facts.text().contains(QLatin1String(wanted)), wanted);
    QVERIFY(!facts.text().contains(QStringLiteral("Work\ntoken")));
    // What the token does not tell has no row.
    QVERIFY(!facts.text().contains(QStringLiteral("trivex-app-token-space")));
    TokenLook look;
    look.isTaken = true;
    TokenAbility ability;
    ability.makes = ability.signs = true;
    look.abilities = {ability};
    look.secretKeys = 3;
    QSignalSpy changed(&facts, &TokenFactList::changed);
    publishTokenLook(QStringLiteral("a"), look);
    QCOMPARE(changed.count(), 1);
    QVERIFY(facts.text().contains(QStringLiteral(
        "trivex-app-ability-rsa: trivex-app-ability-makes, trivex-app-ability-signs")));
    QVERIFY(facts.text().contains(QStringLiteral("trivex-app-token-secrets: 3")));
    publish("a", {}, false);
    QVERIFY(!facts.present());
    QVERIFY(!facts.text().contains(QStringLiteral("trivex-app-ability-rsa")));
}

/// A token that signs with larger keys than it makes.
void TestTokenKeys::offersWhatIsMade()
{
    publish("a", {});
    TokenLook look;
    look.isTaken = true;
    TokenAbility rsa;
    rsa.makes = rsa.signs = true;
    rsa.smallest = 512;
    rsa.largest = 4096;
    rsa.madeSmallest = 1024;
    rsa.madeLargest = 2048;
    TokenAbility curves;
    curves.kind = TokenAbility::EllipticCurve;
    curves.signs = true;
    curves.largest = 521;
    look.abilities = {rsa, curves};
    publishTokenLook(QStringLiteral("a"), look);
    KeyKindModel model;
    model.setStoreId(QStringLiteral("a"));
    QCOMPARE(model.count(), 1);
    QCOMPARE(model.index(0).data(KeyKindModel::KindRole).toInt(), int(KeyRequest::Rsa2048));
}

/// With and without a certificate: those that sign, or may do so.
void TestTokenKeys::choosesAmongKeysThatSign()
{
    TokenKeyFacts signing = key("signs");
    signing.usesKnown = true;
    signing.uses = TokenKeyFacts::Signs;
    TokenKeyFacts decrypting = key("decrypts");
    decrypting.usesKnown = true;
    decrypting.uses = TokenKeyFacts::Decrypts;
    TokenKeyFacts withoutPublicHalf = key("half");
    withoutPublicHalf.publicInfo.clear();
    TokenKeyFacts agreeing = key("x25519");
    agreeing.publicInfo = QByteArray::fromHex("302a300506032b656e032100") + QByteArray(32, '\x09');
    TokenKeyFacts certified = decrypting;
    certified.id = QStringLiteral("certified");
    certified.entryId = QStringLiteral("entry");
    publish("a",
            {signing, decrypting, withoutPublicHalf, agreeing, certified, key("before login"),
             key("owned", "key", "entry")});
    KeyChoiceModel model;
    model.setStoreId(QStringLiteral("a"));
    QStringList ids;
    for (int row = 0; row < model.count(); ++row)
        ids += model.index(row).data(KeyChoiceModel::KeyIdRole).toString();
    QCOMPARE(ids.join(QLatin1Char('|')), QStringLiteral("|signs|before login|owned"));
    TokenKeyModel rows;
    QVERIFY(!rows.index(rows.rowOfIdentity(QStringLiteral("a\nx25519")))
                 .data(TokenKeyModel::CanRequestRole)
                 .toBool());
}

QTEST_GUILESS_MAIN(TestTokenKeys)
#include "tst_tokenkeys.moc"
