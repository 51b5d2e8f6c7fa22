// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificateimport.h"

#include "qca/asn1/pem.h"
#include "qca/base/atomicfile.h"
#include "qca/base/bounds.h"
#include "qca/base/filenames.h"
#include "qca/base/privatedirectory.h"
#include "qca/questions/background.h"
#include "qca/tokens/userstore.h"
#include "tools/fileitemtexts.h"
#include "tools/files.h"
#include "tools/listfolder.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QTimer>

#include <algorithm>

namespace Trivex {

namespace {

/// Names of one request, or list, that are tried until one is free.
constexpr int MostNames = 1000;
/// The longest wait for the store of the user's files to start, and between two looks; in ms.
constexpr int StorePatience = 10000;
constexpr int StoreLook = 50;
/// Certificates that a token gets at once: each time its rows are made anew, so there are more and
/// more, but never so many that nobody sees how far it is, or that a signature waits for long.
constexpr int FewestTogether = 2;
constexpr int FirstTogether = 16;
constexpr int MostTogether = 256;
constexpr qint64 ShortStep = 500; // ms
constexpr qint64 LongStep = 2000; // ms

QCA::KeyBundle bundleOf(const QVector<FileItem> &items)
{
    QCA::CertificateChain chain;
    for (const FileItem &item : items)
        chain.append(item.certificate());
    QCA::KeyBundle bundle;
    bundle.setCertificateChainAndKey(chain, items.first().key);
    bundle.setName(items.first().label);
    return bundle;
}

/// Writes to the first name in `folder` that is free; any thread.
bool saveAnew(const QString &folder, const QString &name, const char *suffix,
              const QByteArray &contents)
{
    const QString end = QLatin1String(suffix);
    for (int number = 1; number <= MostNames && !folder.isEmpty(); ++number) {
        const QString tail = number > 1 ? QStringLiteral(" (%1)").arg(number) + end : end;
        const QString path = folder + QLatin1Char('/') + safeFileName(name, tail);
        const WriteResult result = writeAtomically(path, contents, false);
        if (result != WriteResult::Exists)
            return result == WriteResult::Written;
    }
    return false;
}

enum class ListSaving { Saved, NoRoom, Failed };

/// As it is in DER: PEM may be larger than what is read again. Any thread.
ListSaving saveListAt(const QString &folder, const QString &name, const QByteArray &der)
{
    qint64 bytes = 0;
    if (ListFolder::listsNow(folder, &bytes).contains(der))
        return ListSaving::Saved;
    if (der.size() > MaxFileBytes || bytes + der.size() > MaxListBytes)
        return ListSaving::NoRoom;
    return makePrivateDirectory(folder) && saveAnew(folder, name, ".crl", der) ? ListSaving::Saved
                                                                               : ListSaving::Failed;
}

} // namespace

CertificateImport::CertificateImport(QObject *parent)
    : QObject(parent)
    , m_clock([] { return qint64(QDeadlineTimer::current(Qt::PreciseTimer).deadline()); })
{
    connect(&m_writer, &StoreWriter::written, this,
            [this](const QString &entryId) { stepEnded(!entryId.isEmpty()); });
    connect(&m_writer, &StoreWriter::writtenSeveral, this, [this](int count, bool good) {
        if (!m_running)
            return;
        adjustStep();
        // What failed after the last one was there, such as a reading, leaves nothing to be done.
        const bool isWhole = good || (count == m_step.rows.size() && m_steps.isEmpty());
        if (!isWhole)
            noteWritten(count);
        stepEnded(isWhole);
    });
    connect(&m_monitor, &TokenMonitor::failed, this, [this](const TokenError &error) {
        if (m_running && error.keyStoreId == m_storeId && error.purpose == Purpose::Write)
            m_tokenError = error.kind;
    });
}

CertificateImport::~CertificateImport() = default;

QString CertificateImport::filesStoreId() const
{
    return userStoreId();
}

void CertificateImport::setRequestFolder(const QString &folder)
{
    if (m_requestFolder == folder)
        return;
    m_requestFolder = folder;
    Q_EMIT requestFolderChanged();
}

void CertificateImport::start(CertificateFile *file, const QString &storeId)
{
    if (m_running || !file)
        return;
    m_file = file;
    m_storeId = storeId;
    m_problem.clear();
    m_written = 0;
    m_together = FirstTogether;
    m_isFull = false;
    m_stopped = false;
    m_left = false;
    m_tokenError = TokenError::NoError;
    m_running = true;
    ++m_serial;
    plan();
    Q_EMIT changed();
    QTimer::singleShot(0, this, &CertificateImport::next);
}

void CertificateImport::plan()
{
    Step owned; // those that come with a key
    QVector<Step> single;
    const QVector<FileItem> &items = m_file->items()->items();
    const bool takesKeys = m_storeId != userStoreId();
    for (int row = 0; row < items.size(); ++row) {
        const FileItem &item = items.at(row);
        if (!item.isChecked)
            continue;
        if (takesKeys && item.kind == FileObject::Certificate && !item.key.isNull()) {
            owned.rows += row;
            owned.items += item;
        } else {
            single += Step{{row}, {item}};
        }
    }
    m_steps.clear();
    m_count = owned.rows.size() + single.size();
    for (int i = 0; i < owned.rows.size(); ++i)
        m_steps += Step{{owned.rows.at(i)}, {owned.items.at(i)}};
    // Its issuers come with a key: all of it is on the token then, or nothing.
    const bool isWhole = owned.rows.size() == 1;
    for (const Step &step : qAsConst(single)) {
        if (isWhole && step.items.first().kind == FileObject::Certificate) {
            m_steps.first().rows += step.rows;
            m_steps.first().items += step.items;
        } else {
            m_steps += step;
        }
    }
}

/// A certificate alone, for a token.
bool CertificateImport::isPlain(const Step &step) const
{
    return m_storeId != userStoreId() && step.items.size() == 1
        && step.items.first().kind == FileObject::Certificate && step.items.first().key.isNull();
}

void CertificateImport::adjustStep()
{
    const qint64 took = m_clock() - m_stepBegan;
    if (took < ShortStep)
        m_together = std::min(2 * m_together, MostTogether);
    else if (took > LongStep)
        m_together = std::max(m_together / 2, FewestTogether);
}

void CertificateImport::joinSteps()
{
    if (!isPlain(m_step))
        return;
    while (!m_steps.isEmpty() && m_step.rows.size() < m_together && isPlain(m_steps.head())) {
        const Step more = m_steps.dequeue();
        m_step.rows += more.rows;
        m_step.items += more.items;
    }
}

void CertificateImport::next()
{
    if (m_steps.isEmpty()) {
        end(true);
    } else if (m_stopped) {
        end(false);
    } else {
        m_step = m_steps.dequeue();
        joinSteps();
        m_tokenError = TokenError::NoError;
        m_sinceAsked.start();
        tryStep();
    }
}

void CertificateImport::tryStep()
{
    if (!m_running || begin(m_step))
        return;
    // The store of the user's files starts with all others, a while after the window.
    const bool mayCome = m_storeId == userStoreId() && !m_stopped
        && m_step.items.first().kind == FileObject::Certificate
        && m_sinceAsked.elapsed() < StorePatience;
    if (mayCome)
        QTimer::singleShot(StoreLook, this, &CertificateImport::tryStep);
    else
        stepEnded(false);
}

bool CertificateImport::begin(const Step &step)
{
    const FileItem &item = step.items.first();
    if (item.kind == FileObject::Request) {
        const bool good = saveRequest(item);
        if (good)
            stepEnded(true);
        return good;
    }
    if (item.kind == FileObject::RevocationList) {
        saveList(item);
        return true;
    }
    if (step.items.size() > 1 && item.key.isNull()) {
        QVector<QByteArray> ders;
        for (const FileItem &one : step.items)
            ders += one.der;
        m_stepBegan = m_clock();
        return m_writer.write(m_storeId, ders);
    }
    const bool withKey = !item.key.isNull() && m_storeId != userStoreId();
    return withKey ? m_writer.write(m_storeId, bundleOf(step.items))
                   : m_writer.write(m_storeId, item.certificate());
}

bool CertificateImport::saveRequest(const FileItem &request) const
{
    return saveAnew(m_requestFolder, itemName(request), ".csr",
                    writePem("CERTIFICATE REQUEST", request.der));
}

/// A list may have megabytes, and is on the disk when it counts as written.
void CertificateImport::saveList(const FileItem &list)
{
    const auto saving = std::make_shared<ListSaving>();
    const QString folder = userStoreDirectory();
    runInBackground([der = list.der, name = itemName(list), folder,
                     saving] { *saving = saveListAt(folder, name, der); },
                    this,
                    [this, saving, serial = m_serial] {
                        if (serial != m_serial)
                            return;
                        m_isFull = *saving == ListSaving::NoRoom;
                        stepEnded(*saving == ListSaving::Saved);
                    });
}

void CertificateImport::stepEnded(bool good)
{
    if (!m_running)
        return;
    if (!good) {
        end(false);
        return;
    }
    noteWritten(m_step.rows.size());
    Q_EMIT changed();
    QTimer::singleShot(0, this, &CertificateImport::next);
}

void CertificateImport::noteWritten(int count)
{
    m_written += count;
    if (m_file)
        m_file->items()->setChecked(m_step.rows.mid(0, count), false);
}

QString CertificateImport::reason() const
{
    if (m_isFull) {
        //% "The lists of revoked certificates among your files may have %1 MB together, and this
        //% one would be too much. Remove those that you no longer need, then import what is still
        //% ticked."
        return qtTrId("trivex-app-lists-full").arg(MaxListBytes / 1024 / 1024);
    }
    if (m_written > 0) {
        //% "Only %1 of %2 were imported. What is still ticked is not; start again for it."
        return qtTrId("trivex-app-import-partly").arg(m_written).arg(m_count);
    }
    const bool isRequest =
        !m_left && !m_step.items.isEmpty() && m_step.items.first().kind == FileObject::Request;
    if (isRequest)
        return Files().whyNotWritten(m_requestFolder);
    const bool isList = !m_left && !m_step.items.isEmpty()
        && m_step.items.first().kind == FileObject::RevocationList;
    if (isList)
        return Files().whyNotWritten(userStoreDirectory());
    if (m_storeId == userStoreId() && !m_left)
        return Files().whyNotWritten(userStoreDirectory());
    //% "Nothing was imported."
    return qtTrId("trivex-app-import-failed");
}

void CertificateImport::end(bool good)
{
    m_left = !good
        && (m_stopped || m_tokenError == TokenError::Cancelled
            || m_tokenError == TokenError::PinMissing);
    if (good)
        m_tokenError = TokenError::NoError;
    m_problem = good ? QString() : reason();
    m_running = false;
    m_steps.clear();
    m_step = {};
    Q_EMIT changed();
    Q_EMIT finished(good);
}

void CertificateImport::cancel()
{
    if (!m_running)
        return;
    m_stopped = true;
    m_writer.cancel();
}

void CertificateImport::clear()
{
    if (m_problem.isEmpty())
        return;
    m_problem.clear();
    Q_EMIT changed();
}

} // namespace Trivex
