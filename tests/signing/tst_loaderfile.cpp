// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/loaderfile.h"

#include <QMetaEnum>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtCrypto>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QByteArray text = "Some plain text\n";

QByteArray pngData()
{
    return QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAC"
        "hwGA60e6kgAAAABJRU5ErkJggg==");
}

/// The names of the signals of one object, in the order in which they come.
class Recorder : public QObject {
    Q_OBJECT
public:
    explicit Recorder(LoaderFile *loader)
    {
        connect(loader, &LoaderFile::filePathChanged, this, [this] { add("filePath"); });
        connect(loader, &LoaderFile::fileNameChanged, this, [this] { add("fileName"); });
        connect(loader, &LoaderFile::mimeTypeChanged, this, [this] { add("mimeType"); });
        connect(loader, &LoaderFile::fileSizeChanged, this, [this] { add("fileSize"); });
        connect(loader, &LoaderFile::fileHashChanged, this, [this] { add("fileHash"); });
        connect(loader, &LoaderFile::hashTypeChanged, this, [this] { add("hashType"); });
        connect(loader, &LoaderFile::isImageChanged, this, [this] { add("isImage"); });
        connect(loader, &LoaderFile::isPdfChanged, this, [this] { add("isPdf"); });
        connect(loader, &LoaderFile::rawDataChanged, this, [this] { add("rawData"); });
        connect(loader, &LoaderFile::statusChanged, this,
                [=] { names << QStringLiteral("status=%1").arg(loader->status()); });
        connect(loader, &LoaderFile::errorChanged, this,
                [=] { names << QStringLiteral("error=%1").arg(loader->error()); });
    }

    QStringList take() { return std::exchange(names, {}); }

private:
    void add(const char *name) { names << QLatin1String(name); }
    QStringList names;
};

const QStringList loadedSignals{QStringLiteral("status=2"), QStringLiteral("status=1"),
                                QStringLiteral("filePath"), QStringLiteral("fileName"),
                                QStringLiteral("mimeType"), QStringLiteral("fileSize"),
                                QStringLiteral("fileHash"), QStringLiteral("rawData")};

} // namespace

class TestLoaderFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void interface();
    void start();
    void loads();
    void samePathTwice();
    void types_data();
    void types();
    void refusedKeepsTheRest();
    void missingKeepsTheRest();
    void notRegular_data();
    void notRegular();
    void unreadable();
    void hashType();
    void unknownHashType();
    void setErrorNotifiesChanges();
    void destroyedAtOnce();

private:
    QString make(const QString &name, const QByteArray &content) const;
    QTemporaryDir m_directory;
};

QString TestLoaderFile::make(const QString &name, const QByteArray &content) const
{
    QFile file(m_directory.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return file.fileName();
}

void TestLoaderFile::interface()
{
    const QMetaObject &meta = LoaderFile::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    }
    QCOMPARE(methods.join(QLatin1Char(' ')),
             QStringLiteral("filePathChanged() fileNameChanged() mimeTypeChanged() "
                            "fileSizeChanged() fileHashChanged() hashTypeChanged() "
                            "statusChanged() errorChanged() isImageChanged() isPdfChanged() "
                            "rawDataChanged()"));
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        properties << QStringLiteral("%1 %2%3%4")
                          .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
                               property.isWritable() ? QStringLiteral(" w") : QString(),
                               property.isConstant() ? QStringLiteral(" c") : QString());
    }
    QCOMPARE(properties.join(QLatin1String(", ")),
             QStringLiteral("QString filePath w, QString hashType w, QString fileName, "
                            "QString mimeType, qlonglong fileSize, QString fileHash, int status, "
                            "int error w, QStringList availableMimeTypes c, bool isImage, "
                            "bool isPdf, QByteArray rawData"));
    const auto status = QMetaEnum::fromType<LoaderFile::Status>();
    QCOMPARE(status.keyToValue("Null"), 0);
    QCOMPARE(status.keyToValue("Ready"), 1);
    QCOMPARE(status.keyToValue("Loading"), 2);
    QCOMPARE(status.keyToValue("Error"), 3);
    const auto error = QMetaEnum::fromType<LoaderFile::ErrorType>();
    QCOMPARE(error.keyToValue("NoError"), 0);
    QCOMPARE(error.keyToValue("ErrorNotOpenFile"), 1);
    QCOMPARE(error.keyToValue("ErrorNotLoadFile"), 2);
    QCOMPARE(error.keyToValue("ErrorMimeType"), 3);
}

void TestLoaderFile::start()
{
    const LoaderFile loader;
    QCOMPARE(loader.status(), int(LoaderFile::Null));
    QCOMPARE(loader.error(), int(LoaderFile::NoError));
    QCOMPARE(loader.hashType(), QStringLiteral("sha256"));
    QCOMPARE(loader.fileSize(), 0);
    QVERIFY(loader.rawData().isEmpty());
    QVERIFY(!loader.isImage());
    QVERIFY(!loader.isPdf());
    QCOMPARE(loader.availableMimeTypes(),
             QStringList({QStringLiteral("application/pdf"), QStringLiteral("image/png"),
                          QStringLiteral("image/jpeg"), QStringLiteral("text/plain")}));
}

void TestLoaderFile::loads()
{
    const QString path = make(QStringLiteral("a.txt"), text);
    LoaderFile loader;
    Recorder recorder(&loader);
    loader.setFilePath(path);
    QCOMPARE(recorder.take(), loadedSignals);
    QCOMPARE(loader.filePath(), path);
    QCOMPARE(loader.fileName(), QStringLiteral("a.txt"));
    QCOMPARE(loader.mimeType(), QStringLiteral("text/plain"));
    QCOMPARE(loader.fileSize(), qint64(text.size()));
    QCOMPARE(loader.rawData(), text);
    QCOMPARE(loader.fileHash().toLatin1(),
             QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

void TestLoaderFile::samePathTwice()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    Recorder recorder(&loader);
    loader.setFilePath(loader.filePath());
    QCOMPARE(recorder.take(), QStringList());
    loader.setFilePath(make(QStringLiteral("b.txt"), "other"));
    QCOMPARE(recorder.take(), loadedSignals);
    QCOMPARE(loader.rawData(), QByteArray("other"));
}

void TestLoaderFile::types_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("type");
    const QByteArray svg = "<?xml version=\"1.0\"?><svg xmlns=\"http://www.w3.org/2000/svg\"/>";
    QTest::newRow("text") << "t.txt" << text << "text/plain";
    QTest::newRow("PDF") << "t.pdf" << QByteArray("%PDF-1.4\n%%EOF\n") << "application/pdf";
    QTest::newRow("PDF without suffix")
        << "pdf" << QByteArray("%PDF-1.4\n%%EOF\n") << "application/pdf";
    QTest::newRow("PNG") << "t.png" << pngData() << "image/png";
    QTest::newRow("JPEG") << "t.jpg" << QByteArray("\xff\xd8\xff\xe0") << "image/jpeg";
    QTest::newRow("SVG") << "t.svg" << svg << "";
    QTest::newRow("C source") << "t.c" << QByteArray("int main(void) { return 0; }\n") << "";
    QTest::newRow("binary") << "t.bin" << QByteArray("\0\1\2\3", 4) << "";
}

void TestLoaderFile::types()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, type);
    LoaderFile loader;
    Recorder recorder(&loader);
    loader.setFilePath(make(name, content));
    if (type.isEmpty()) {
        QCOMPARE(recorder.take(),
                 QStringList({QStringLiteral("status=2"), QStringLiteral("error=3"),
                              QStringLiteral("status=3")}));
        QCOMPARE(loader.filePath(), QString());
    } else {
        QCOMPARE(recorder.take(), loadedSignals);
    }
    QCOMPARE(loader.mimeType(), type);
    QCOMPARE(loader.isImage(), type.startsWith(QLatin1String("image/")));
    QCOMPARE(loader.isPdf(), type == QLatin1String("application/pdf"));
}

void TestLoaderFile::refusedKeepsTheRest()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    const QString path = loader.filePath();
    const QString hash = loader.fileHash();
    const QByteArray bytes = loader.rawData();
    loader.setFilePath(make(QStringLiteral("t.c"), "int main(void) { return 0; }\n"));
    QCOMPARE(loader.status(), int(LoaderFile::Error));
    QCOMPARE(loader.error(), int(LoaderFile::ErrorMimeType));
    QCOMPARE(loader.filePath(), path);
    QCOMPARE(loader.fileHash(), hash);
    QCOMPARE(loader.fileSize(), qint64(text.size()));
    QCOMPARE(loader.mimeType(), QStringLiteral("text/plain"));
    // The file is given up with its bytes, but what was handed out can still be read.
    QVERIFY(loader.rawData().isEmpty());
    QCOMPARE(bytes, text);
    Recorder recorder(&loader);
    loader.setFilePath(make(QStringLiteral("b.txt"), text));
    QCOMPARE(recorder.take().mid(0, 3),
             QStringList({QStringLiteral("status=2"), QStringLiteral("error=0"),
                          QStringLiteral("status=1")}));
}

void TestLoaderFile::missingKeepsTheRest()
{
    LoaderFile loader;
    const QString path = make(QStringLiteral("a.txt"), text);
    loader.setFilePath(path);
    Recorder recorder(&loader);
    loader.setFilePath(m_directory.filePath(QStringLiteral("missing.txt")));
    QCOMPARE(recorder.take(),
             QStringList({QStringLiteral("status=2"), QStringLiteral("error=1"),
                          QStringLiteral("status=3")}));
    QCOMPARE(loader.filePath(), path);
}

void TestLoaderFile::notRegular_data()
{
    QTest::addColumn<QString>("path");
    const QString pipe = m_directory.filePath(QStringLiteral("pipe.txt"));
    mkfifo(QFile::encodeName(pipe).constData(), 0600);
    const QString link = m_directory.filePath(QStringLiteral("link.txt"));
    symlink(QFile::encodeName(pipe).constData(), QFile::encodeName(link).constData());
    QTest::newRow("pipe") << pipe;
    QTest::newRow("link to a pipe") << link;
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("device") << QStringLiteral("/dev/zero");
    QTest::newRow("below a file") << make(QStringLiteral("f"), text) + QStringLiteral("/x.txt");
}

void TestLoaderFile::notRegular()
{
    QFETCH(QString, path);
    LoaderFile loader;
    loader.setFilePath(path);
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotOpenFile));
    QCOMPARE(loader.status(), int(LoaderFile::Error));
}

void TestLoaderFile::unreadable()
{
    const QString path = make(QStringLiteral("secret.txt"), text);
    const auto readable =
        QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_directory.path(), readable));
    QVERIFY(QFile::setPermissions(path, {}));
    // The administrator may read every file, so be somebody else.
    const uid_t user = geteuid();
    QVERIFY(user != 0 || seteuid(65534) == 0);
    LoaderFile loader;
    loader.setFilePath(path);
    QVERIFY(seteuid(user) == 0);
    QCOMPARE(loader.error(), int(LoaderFile::ErrorNotOpenFile));
}

void TestLoaderFile::hashType()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    Recorder recorder(&loader);
    loader.setHashType(QStringLiteral("sha1"));
    QCOMPARE(recorder.take(), QStringList({QStringLiteral("hashType")}));
    QCOMPARE(loader.fileHash().toLatin1(),
             QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex());
    loader.setHashType(QStringLiteral("sha1"));
    QCOMPARE(recorder.take(), QStringList());
    loader.setHashType(QStringLiteral("sha256"));
    QCOMPARE(loader.fileHash().toLatin1(),
             QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
}

void TestLoaderFile::unknownHashType()
{
    LoaderFile loader;
    loader.setFilePath(make(QStringLiteral("a.txt"), text));
    for (const QString &name : {QStringLiteral("rsa"), QStringLiteral("nothing"), QString()}) {
        loader.setHashType(name);
        QCOMPARE(loader.fileHash(), QString());
        QCOMPARE(loader.status(), int(LoaderFile::Ready));
    }
}

void TestLoaderFile::setErrorNotifiesChanges()
{
    LoaderFile loader;
    QSignalSpy changed(&loader, &LoaderFile::errorChanged);
    loader.setError(LoaderFile::ErrorMimeType);
    loader.setError(LoaderFile::ErrorMimeType);
    QCOMPARE(changed.count(), 1);
    loader.setError(LoaderFile::NoError);
    QCOMPARE(changed.count(), 2);
}

void TestLoaderFile::destroyedAtOnce()
{
    for (int i = 0; i < 20; ++i) {
        LoaderFile loader;
        loader.setFilePath(make(QStringLiteral("a.txt"), text));
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestLoaderFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_loaderfile.moc"
