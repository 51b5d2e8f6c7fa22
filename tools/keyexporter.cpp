// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyexporter.h"

#include "qca/adapter/entries.h"
#include "qca/base/atomicfile.h"
#include "qca/base/securedtext.h"
#include "qca/cms/documentkey.h"
#include "qca/keys/keys.h"
#include "qca/pkcs12/bundlewriter.h"
#include "qca/questions/background.h"
#include "qca/tokens/tokenadministration.h"
#include "tools/files.h"
#include "tools/keyleave.h"

#include <QDir>

#include <utility>

namespace Trivex {

/// What the thread gets, and what it makes of it.
struct KeyExporter::Work {
    BundleParts parts;
    ChainInput path;
    Secret password;
    QString folder;
    std::shared_ptr<const QTemporaryDir> staging; ///< keeps the folder while it is written to
    std::atomic<bool> isCancelled{false};
    Error error = NoError;

    void addIssuers();
    void run();
};

/// Those of the path, then what came with the key beside them.
void KeyExporter::Work::addIssuers()
{
    QVector<QByteArray> all = ExportPath::of(path, isCancelled);
    for (const QByteArray &der : qAsConst(parts.chain)) {
        if (!all.contains(der))
            all += der;
    }
    parts.chain = all;
}

void KeyExporter::Work::run()
{
    addIssuers();
    const QByteArray file = writeBundleFile(parts, password);
    parts.privateInfo = Secret();
    password = Secret();
    if (file.isEmpty())
        error = NotMade;
    else if (!isCancelled
             && writeAtomically(FileSaver::stagedFile(folder, FileSaver::AsIs), file, true)
                 != WriteResult::Written)
        error = NotWritten;
}

namespace {

QVector<QByteArray> certificatesOf(const QVector<FileItem> &items)
{
    QVector<QByteArray> found;
    for (const FileItem &item : items) {
        if (item.kind == FileObject::Certificate)
            found += item.der;
    }
    return found;
}

} // namespace

KeyExporter::KeyExporter(QObject *parent)
    : Job(parent)
{
}

KeyExporter::~KeyExporter()
{
    m_arrival->close();
    if (m_work)
        m_work->isCancelled = true;
    if (m_task)
        cancelTokenTask(m_task);
}

QString KeyExporter::message() const
{
    switch (m_error) {
    case NothingThere:
        return qtTrId("trivex-app-export-nothing");
    case NoPassword:
        //% "Type a password: without one, everybody could read the key."
        return qtTrId("trivex-app-export-no-password");
    case NotMade:
        //% "This kind of key can't be put into a file. Use it where it is."
        return qtTrId("trivex-app-export-not-made");
    case NotWritten:
        return Files().whyNotWritten(QDir::tempPath());
    default:
        return {};
    }
}

void KeyExporter::cancel()
{
    if (!isRunning())
        return;
    if (m_task)
        cancelTokenTask(m_task);
    finish(Cancelled);
}

void KeyExporter::stage(EntryModel *entries, const QString &identity, const QString &password,
                        FileSaver *saver)
{
    if (!begin())
        return;
    m_work = std::make_shared<Work>();
    m_work->password = Secret(securedText(password.toUtf8()));
    const QCA::KeyStoreEntry *entry = wrappedBundle(entries, identity);
    const QCA::KeyBundle bundle = entry ? entryKeyBundle(*entry) : QCA::KeyBundle();
    if (bundle.isNull())
        return finish(NothingThere);
    m_work->parts.name = bundle.name();
    m_work->parts.chain = signingChain(bundle).toVector();
    start(bundle.privateKey(), entries, saver);
}

void KeyExporter::stageItem(FileItemModel *items, int row, EntryModel *entries,
                            const QString &password, FileSaver *saver)
{
    if (!begin())
        return;
    m_work = std::make_shared<Work>();
    m_work->password = Secret(securedText(password.toUtf8()));
    if (KeyLeave::ofItem(items, row) != KeyLeave::Leaves)
        return finish(NothingThere);
    const FileItem &item = items->items().at(row);
    m_work->parts.name = item.label.isEmpty() ? item.certificate().commonName() : item.label;
    m_work->parts.chain = {item.der};
    for (const QByteArray &der : certificatesOf(items->items()))
        m_work->path.candidates += {der, QString(), false};
    start(item.key, entries, saver);
}

void KeyExporter::start(const QCA::PrivateKey &key, EntryModel *entries, FileSaver *saver)
{
    m_error = NoError;
    ++m_serial;
    m_entries = entries;
    if (m_work->password.isEmpty())
        return finish(NoPassword);
    m_work->folder = saver ? saver->privateStagingFolder() : QString();
    if (m_work->folder.isEmpty())
        return finish(NotWritten);
    m_work->staging = saver->staging();
    m_storeId = keyStoreIdOf(key);
    if (!m_storeId.isEmpty()) {
        if (!askToken(m_storeId, encodedPublicKey(key)))
            finish(NothingThere);
        return;
    }
    m_work->parts.privateInfo = Secret(key.toDER());
    gather();
}

bool KeyExporter::askToken(const QString &storeId, const QByteArray &publicInfo)
{
    const auto arrival = m_arrival;
    m_task = startKeyExtraction(storeId, publicInfo,
                                [this, arrival, serial = m_serial](const ExtractedKey &key) {
                                    arrival->post([this, key, serial] { takeKey(key, serial); });
                                });
    return m_task != nullptr;
}

void KeyExporter::takeKey(const ExtractedKey &key, int serial)
{
    if (serial != m_serial || !m_work)
        return;
    m_task.reset();
    if (key.privateInfo.isEmpty()) {
        const bool isLeft =
            key.error.kind == TokenError::Cancelled || key.error.kind == TokenError::PinMissing;
        return finish(isLeft ? Cancelled : TokenRefused);
    }
    m_work->parts.privateInfo = key.privateInfo;
    gather();
}

void KeyExporter::gather()
{
    m_path.gather(m_entries, m_work->parts.chain.value(0), [this](const ChainInput &input) {
        const auto own = std::exchange(m_work->path, input).candidates;
        m_work->path.candidates += own;
        makeFile();
    });
}

void KeyExporter::makeFile()
{
    runInBackground([work = m_work] { work->run(); }, this,
                    [this, serial = m_serial] {
                        if (serial == m_serial && m_work)
                            finish(m_work->error);
                    });
}

/// Well or not.
void KeyExporter::finish(Error error)
{
    m_error = error;
    ++m_serial;
    m_path.drop();
    m_task.reset();
    if (m_work)
        m_work->isCancelled = true;
    m_work.reset();
    end();
}

} // namespace Trivex
