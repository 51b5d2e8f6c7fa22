// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/cache/rowmark.h"
#include "providers/pkcs11/cache/tokencache.h"
#include "providers/pkcs11/life/tokenmemory.h"
#include "tests/support/testcertificates.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cstddef>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

using namespace Trivex;

namespace {

const RowKey Key = {QStringLiteral("pkcs11:token=Card;serial=1"), QByteArrayLiteral("mark")};

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

} // namespace

/// The files in which rows of tokens are remembered.
class TestTokenCache : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void readsWhatWasWritten();
    void shunned();
    void anotherStateOfTheToken();
    void damagedAnywhere();
    void countsAreNotBelieved();
    void otherFormsAreNotRead();
    void ownersOnly();
    void offMeansOff();
    void boundsOfTheFiles();
    void largeTokensAreLeftOut();
    void oldOnesGo();
    void switchedOffElsewhere();
    void switchedOffWhileWriting();
    void nothingButRowsIsRemoved();
    void linksAreNotFollowed();
    void directoryOfItsOwn();
    void directoryOfAnother();
    void marks();
    void withoutSerialNumber();

private:
    QStringList files() const { return QDir(path()).entryList({QStringLiteral("*.rows")}); }
    QString path() const { return m_directory->filePath(QStringLiteral("trivex/tokens")); }
    QString onlyFile() const { return path() + QLatin1Char('/') + files().value(0); }

    std::unique_ptr<QTemporaryDir> m_directory;
    TokenObjects m_objects;
};

void TestTokenCache::initTestCase()
{
    const TrivexTest::TestAuthority authority;
    QVERIFY2(authority.isValid(), "openssl made no certificate");
    TokenCertificate certificate;
    certificate.der = authority.certificate();
    certificate.id = QByteArrayLiteral("\x01\x00\x02");
    certificate.label = QStringLiteral("Подпись");
    certificate.parts = certificateParts(certificate.der);
    certificate.objects = {17};
    TokenKey key;
    key.type = CKK_EC;
    key.id = certificate.id;
    key.label = QStringLiteral("key");
    key.publicInfo = QByteArrayLiteral("info");
    key.publicObject = 18;
    key.origin = TokenKeyFacts::MadeHere;
    key.leave = TokenKeyFacts::Stays;
    key.uses = TokenKeyFacts::Signs;
    m_objects.certificates = {certificate};
    m_objects.publicKeys = {key};
    m_objects.privateKeysHidden = true;
}

void TestTokenCache::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void TestTokenCache::readsWhatWasWritten()
{
    const auto read = unpackRows(Key, packRows(Key, m_objects));
    QVERIFY(read);
    QCOMPARE(read->certificates.size(), size_t(1));
    QCOMPARE(read->certificates[0].der, m_objects.certificates[0].der);
    QCOMPARE(read->certificates[0].id, m_objects.certificates[0].id);
    QCOMPARE(read->certificates[0].label, m_objects.certificates[0].label);
    QVERIFY(read->certificates[0].parts.isValid());
    QCOMPARE(read->publicKeys.size(), size_t(1));
    QCOMPARE(read->publicKeys[0].type, m_objects.publicKeys[0].type);
    QCOMPARE(read->publicKeys[0].publicInfo, m_objects.publicKeys[0].publicInfo);
    QCOMPARE(read->publicKeys[0].label, m_objects.publicKeys[0].label);
    QCOMPARE(read->publicKeys[0].uses, m_objects.publicKeys[0].uses);
    QCOMPARE(read->publicKeys[0].origin, m_objects.publicKeys[0].origin);
    QCOMPARE(read->publicKeys[0].leave, m_objects.publicKeys[0].leave);
    QVERIFY(read->privateKeys.empty());
    QVERIFY(read->privateKeysHidden);
    // Handles mean nothing to another process.
    QVERIFY(read->certificates[0].objects.empty());
    QCOMPARE(read->publicKeys[0].publicObject, CK_OBJECT_HANDLE(CK_INVALID_HANDLE));
}

/// Another token has the same names.
void TestTokenCache::shunned()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    QVERIFY(cache.read(Key));
    cache.shun(Key.storeId);
    QVERIFY(files().isEmpty());
    cache.write(Key, m_objects);
    QVERIFY(files().isEmpty());
    // Written by another process, which has seen one of them only.
    TokenCache other(path());
    other.setOn(true);
    other.write(Key, m_objects);
    QVERIFY(other.read(Key));
    QVERIFY(!cache.read(Key));
}

void TestTokenCache::anotherStateOfTheToken()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    QVERIFY(cache.read(Key));
    QVERIFY(!cache.read({Key.storeId, QByteArrayLiteral("other")}));
    QVERIFY(!cache.read({QStringLiteral("pkcs11:token=Card;serial=2"), Key.mark}));
    // Under the name of another token.
    const RowKey other = {QStringLiteral("pkcs11:token=Other"), Key.mark};
    const QString before = onlyFile();
    cache.write(other, m_objects);
    const QStringList both = files();
    QCOMPARE(both.size(), 2);
    for (const QString &name : both) {
        const QString moved = path() + QLatin1Char('/') + name;
        if (moved != before) {
            QVERIFY(QFile::remove(moved));
            QVERIFY(QFile::copy(before, moved));
        }
    }
    QVERIFY(!cache.read(other));
    QVERIFY(cache.read(Key));
}

/// Each byte, and each length.
void TestTokenCache::damagedAnywhere()
{
    const QByteArray good = packRows(Key, m_objects);
    for (int i = 0; i < good.size(); ++i) {
        QByteArray damaged = good;
        damaged[i] = char(damaged[i] ^ 0x10);
        QVERIFY2(!unpackRows(Key, damaged), qPrintable(QString::number(i)));
        QVERIFY2(!unpackRows(Key, good.left(i)), qPrintable(QString::number(i)));
    }
    QVERIFY(!unpackRows(Key, good + 'x'));
    QVERIFY(unpackRows(Key, good));
}

/// Whoever writes such a file can compute its digest, too.
void TestTokenCache::countsAreNotBelieved()
{
    const QByteArray head = packRows(Key, {});
    const int digestAt = head.indexOf('\n') + 1;
    const QByteArray payload = head.mid(digestAt + 32);
    // The three counts are its end.
    for (const int from : {12, 8, 4}) {
        QByteArray forged = payload;
        for (int i = 0; i < 4; ++i)
            forged[forged.size() - from + i] = char(0xff);
        const QByteArray digest = QCryptographicHash::hash(forged, QCryptographicHash::Sha256);
        QVERIFY(!unpackRows(Key, head.left(digestAt) + digest + forged));
    }
    TokenObjects broken = m_objects;
    broken.certificates[0].der = QByteArrayLiteral("none");
    QVERIFY(!unpackRows(Key, packRows(Key, broken)));
}

/// Of a version that wrote more, or less, under the same number.
void TestTokenCache::otherFormsAreNotRead()
{
    const QByteArray good = packRows(Key, m_objects);
    const int digestAt = good.indexOf('\n') + 1;
    const QByteArray payload = good.mid(digestAt + 32);
    const auto sealed = [&](const QByteArray &contents, const QByteArray &magic) -> QByteArray {
        return magic + QCryptographicHash::hash(contents, QCryptographicHash::Sha256) + contents;
    };
    const QByteArray magic = good.left(digestAt);
    QVERIFY(unpackRows(Key, sealed(payload, magic)));
    QVERIFY(!unpackRows(Key, sealed(payload + 'x', magic)));
    QVERIFY(!unpackRows(Key, sealed(payload + QByteArray(4, '\0'), magic)));
    for (int size = 0; size < payload.size(); ++size)
        QVERIFY2(!unpackRows(Key, sealed(payload.left(size), magic)),
                 qPrintable(QString::number(size)));
    QByteArray next = magic;
    next[next.size() - 2] = '2';
    QVERIFY(!unpackRows(Key, sealed(payload, next)));
}

void TestTokenCache::ownersOnly()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    QCOMPARE(files().size(), 1);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QVERIFY(!(QFile::permissions(onlyFile()) & others));
    QVERIFY(!(QFile::permissions(onlyFile()) & QFile::ExeOwner));
    QVERIFY(!(QFile::permissions(path()) & others));
    // The name tells nothing of the token.
    QVERIFY(!files().value(0).contains(QStringLiteral("Card")));
}

void TestTokenCache::offMeansOff()
{
    TokenCache cache(path());
    QVERIFY(!cache.isOn());
    cache.write(Key, m_objects);
    QVERIFY(!QFileInfo::exists(path()));
    cache.setOn(true);
    cache.write(Key, m_objects);
    cache.setOn(false);
    QVERIFY(!cache.read(Key));
    cache.clear();
    QVERIFY(!QFileInfo::exists(path()));
    cache.setOn(true);
    QVERIFY(!cache.read(Key));
}

void TestTokenCache::boundsOfTheFiles()
{
    TokenCache cache(path());
    cache.setOn(true);
    for (int i = 0; i < TokenCache::MostTokens + 5; ++i) {
        cache.write({QString::number(i), Key.mark}, m_objects);
        QVERIFY(cache.read({QString::number(i), Key.mark}));
    }
    QCOMPARE(files().size(), TokenCache::MostTokens);
    qint64 bytes = 0;
    TokenObjects large = m_objects;
    large.certificates[0].label = QString(int(MostRowBytes / 2) - 4096, QLatin1Char('x'));
    for (int i = 0; i < 8; ++i)
        cache.write({QString::number(i), Key.mark}, large);
    const auto all = QDir(path()).entryInfoList({QStringLiteral("*.rows")});
    for (const QFileInfo &file : all)
        bytes += file.size();
    QVERIFY(bytes <= TokenCache::MostBytes);
    QVERIFY(bytes > MostRowBytes);
}

void TestTokenCache::largeTokensAreLeftOut()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    TokenObjects large = m_objects;
    large.certificates[0].label = QString(int(MostRowBytes / 2), QLatin1Char('x'));
    cache.write(Key, large);
    // What was there is not true any more.
    QVERIFY(files().isEmpty());
}

void TestTokenCache::oldOnesGo()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    const auto age = [](const QString &path, int days) {
        QFile file(path);
        return file.open(QIODevice::ReadWrite)
            && file.setFileTime(QDateTime::currentDateTimeUtc().addDays(-days),
                                QFileDevice::FileModificationTime);
    };
    QVERIFY(age(onlyFile(), TokenCache::MostDays + 1));
    // Seen again, with the same rows.
    cache.write(Key, m_objects);
    QVERIFY(cache.read(Key));
    QVERIFY(age(onlyFile(), TokenCache::MostDays + 1));
    const RowKey other = {QStringLiteral("other"), Key.mark};
    cache.write(other, m_objects);
    QVERIFY(!cache.read(Key));
    QVERIFY(cache.read(other));
    // Nothing has to be written for it, nor has it to be on.
    QVERIFY(age(onlyFile(), TokenCache::MostDays + 1));
    cache.setOn(false);
    cache.removeOld();
    QVERIFY(files().isEmpty());
}

/// Another process has stored that nothing is to be kept.
void TestTokenCache::switchedOffElsewhere()
{
    const auto reset = qScopeGuard([] {
        setTokensRemembered(false);
        setRememberedSetting({});
    });
    bool stored = true;
    setTokensRemembered(true);
    setRememberedSetting([&] { return stored; });
    TokenCache cache(path());
    cache.write(Key, m_objects);
    QCOMPARE(files().size(), 1);
    stored = false;
    cache.clear();
    cache.write(Key, m_objects);
    QVERIFY(!QFileInfo::exists(path()));
    // The provider's own setting is beside it.
    cache.setOn(true);
    cache.write(Key, m_objects);
    QCOMPARE(files().size(), 1);
}

/// It is switched off between the first look at the setting and the file.
void TestTokenCache::switchedOffWhileWriting()
{
    const auto reset = qScopeGuard([] {
        setTokensRemembered(false);
        setRememberedSetting({});
    });
    int asked = 0;
    setTokensRemembered(true);
    setRememberedSetting([&] { return ++asked == 1; });
    TokenCache cache(path());
    cache.write(Key, m_objects);
    QVERIFY(asked > 1);
    QVERIFY(files().isEmpty());
}

void TestTokenCache::nothingButRowsIsRemoved()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    cache.write({QStringLiteral("other"), Key.mark}, m_objects);
    const QString foreign = path() + QStringLiteral("/notes.txt");
    QVERIFY(write(foreign, "mine"));
    QVERIFY(write(path() + QStringLiteral("/.trivex-1.part"), "half"));
    cache.forget(Key.storeId);
    QCOMPARE(files().size(), 1);
    cache.clear();
    QCOMPARE(QDir(path()).entryList(QDir::Files | QDir::Hidden),
             QStringList({QStringLiteral("notes.txt")}));
}

void TestTokenCache::linksAreNotFollowed()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    const QString name = onlyFile();
    const QString elsewhere = m_directory->filePath(QStringLiteral("elsewhere"));
    QVERIFY(QFile::rename(name, elsewhere));
    QVERIFY(QFile::link(elsewhere, name));
    QVERIFY(!cache.read(Key));
    TokenObjects other = m_objects;
    other.certificates[0].label = QStringLiteral("other");
    const qint64 before = QFileInfo(elsewhere).size();
    cache.write(Key, other);
    QVERIFY(!QFileInfo(name).isSymLink());
    QCOMPARE(QFileInfo(elsewhere).size(), before);
    QVERIFY(cache.read(Key));
}

/// A link would have files written, restricted and removed wherever it leads.
void TestTokenCache::directoryOfItsOwn()
{
    const mode_t before = ::umask(0);
    const auto reset = qScopeGuard([before] { ::umask(before); });
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    QCOMPARE(files().size(), 1);
    const QFile::Permissions others = QFile::ReadGroup | QFile::ExeGroup | QFile::WriteGroup
        | QFile::ReadOther | QFile::ExeOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(path()) & others));
    // Also those above it that were missing.
    QVERIFY(!(QFile::permissions(m_directory->filePath(QStringLiteral("trivex"))) & others));
    const QString elsewhere = m_directory->filePath(QStringLiteral("elsewhere"));
    QVERIFY(QDir().rename(path(), elsewhere));
    QVERIFY(QFile::setPermissions(elsewhere, QFile::permissions(elsewhere) | QFile::ExeGroup));
    QVERIFY(QFile::link(elsewhere, path()));
    QVERIFY(!cache.read(Key));
    cache.write({QStringLiteral("other"), Key.mark}, m_objects);
    cache.forget(Key.storeId);
    cache.clear();
    QCOMPARE(files().size(), 1);
    QVERIFY(QFile::permissions(elsewhere) & QFile::ExeGroup);
}

void TestTokenCache::directoryOfAnother()
{
    TokenCache cache(path());
    cache.setOn(true);
    cache.write(Key, m_objects);
    if (::chown(QFile::encodeName(path()).constData(), 65534, gid_t(-1)) != 0)
        QSKIP("SKIP: only root gives a directory to another user");
    QVERIFY(!cache.read(Key));
    cache.write({QStringLiteral("other"), Key.mark}, m_objects);
    cache.clear();
    QCOMPARE(files().size(), 1);
}

void TestTokenCache::marks()
{
    CK_TOKEN_INFO info = {};
    info.ulFreePublicMemory = 1000;
    const QByteArray before = rowMark(info);
    CK_TOKEN_INFO other = info;
    // Of logins, tries and clocks it says nothing.
    other.ulSessionCount = 3;
    other.flags = CKF_USER_PIN_COUNT_LOW;
    QCOMPARE(rowMark(other), before);
    for (CK_ULONG CK_TOKEN_INFO::*memory :
         {&CK_TOKEN_INFO::ulTotalPublicMemory, &CK_TOKEN_INFO::ulFreePublicMemory,
          &CK_TOKEN_INFO::ulTotalPrivateMemory, &CK_TOKEN_INFO::ulFreePrivateMemory}) {
        other = info;
        ++(other.*memory);
        QVERIFY(rowMark(other) != before);
    }
    other = info;
    other.firmwareVersion.minor = 1;
    QVERIFY(rowMark(other) != before);
}

/// Two of them can't be told apart.
void TestTokenCache::withoutSerialNumber()
{
    TokenCache cache(path());
    CK_TOKEN_INFO info = {};
    for (const char *serial : {"", " ", "0000000000000000", "0"}) {
        memset(&info, ' ', offsetof(CK_TOKEN_INFO, flags));
        memcpy(info.serialNumber, serial, strlen(serial));
        QVERIFY2(!TokenMemory::of(cache, identityOf(info), info), serial);
    }
    memcpy(info.serialNumber, "0000000000000010", sizeof info.serialNumber);
    QVERIFY(TokenMemory::of(cache, identityOf(info), info));
}

QTEST_GUILESS_MAIN(TestTokenCache)
#include "tst_tokencache.moc"
