// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatefile.h"

#include "qca/adapter/filereading.h"
#include "qca/adapter/keybundlefile.h"
#include "qca/base/securedtext.h"
#include "tools/files.h"

namespace Trivex {

namespace {

/// Nobody notices that the window stands still for as long.
constexpr std::chrono::milliseconds UnnoticedPause{40};
/// The longest wait for a thread that was told to stop.
constexpr std::chrono::milliseconds StopPatience{1000};

/// What a file of single objects is, by what is among them.
constexpr struct {
    FileObject::Kind object;
    CertificateFile::Kind file;
} ObjectKinds[] = {
    {FileObject::Certificate, CertificateFile::CertificateKind},
    {FileObject::Request, CertificateFile::RequestKind},
    {FileObject::RevocationList, CertificateFile::RevocationListKind},
    {FileObject::PrivateKey, CertificateFile::PrivateKeyKind},
    {FileObject::SshKey, CertificateFile::PrivateKeyKind},
    {FileObject::PublicKey, CertificateFile::PublicKeyKind},
    {FileObject::EncryptedMessage, CertificateFile::EncryptedMessageKind},
    {FileObject::AttributeCertificate, CertificateFile::AttributeCertificateKind},
    {FileObject::RevocationAnswer, CertificateFile::RevocationAnswerKind},
};

CertificateFile::Kind kindOf(const FileContents &contents)
{
    switch (contents.form) {
    case FileContents::Objects:
        for (const auto &entry : ObjectKinds) {
            if (contents.has(entry.object))
                return entry.file;
        }
        break;
    case FileContents::Collection:
        return CertificateFile::CollectionKind;
    case FileContents::Message:
        return CertificateFile::MessageKind;
    case FileContents::RawSignature:
        return CertificateFile::SignatureKind;
    case FileContents::Bundle:
        return CertificateFile::BundleKind;
    case FileContents::Damaged:
        return CertificateFile::Unreadable;
    case FileContents::Document:
        break;
    }
    return CertificateFile::OtherKind;
}

QString bundleProblem(QCA::ConvertResult result)
{
    switch (result) {
    case QCA::ErrorPassphrase:
        //% "The password is not right. Check the keyboard layout and type it again."
        return qtTrId("trivex-app-bundle-password");
    case QCA::ErrorFile:
        //% "The file could not be read. Check the disk that it is on, or choose another file."
        return qtTrId("trivex-app-read-failed");
    default:
        //% "This bundle can't be read: it is damaged or uses an encryption that this computer does
        //% not know. A wrong password is not the reason. Ask for it to be exported again."
        return qtTrId("trivex-app-bundle-decode");
    }
}

} // namespace

CertificateFile::CertificateFile(QObject *parent)
    : QObject(parent)
{
}

CertificateFile::~CertificateFile()
{
    if (!m_reading)
        return;
    // It uses QCA, which may end next.
    m_reading->stop();
    m_reading->waiter().settles(StopPatience);
}

QString CertificateFile::path() const
{
    return m_path;
}

void CertificateFile::setPath(const QString &path)
{
    if (m_path != path)
        open(path);
}

void CertificateFile::open(const QString &path)
{
    m_path = path;
    clear();
    if (!path.isEmpty())
        read();
    Q_EMIT pathChanged();
    Q_EMIT contentChanged();
}

int CertificateFile::kind() const
{
    return m_kind;
}

QString CertificateFile::problem() const
{
    return m_problem;
}

bool CertificateFile::isUnlocked() const
{
    return m_unlocked;
}

bool CertificateFile::isUnlocking() const
{
    return m_unlocking;
}

int CertificateFile::broken() const
{
    return m_broken;
}

void CertificateFile::clear()
{
    ++m_serial;
    if (m_reading)
        m_reading->stop();
    m_reading.reset();
    m_kind = None;
    m_problem.clear();
    m_unlocked = false;
    m_unlocking = false;
    m_broken = 0;
    m_unreadKeys = 0;
    m_items.setItems({});
}

void CertificateFile::stop()
{
    if (!m_reading)
        return;
    clear();
    Q_EMIT contentChanged();
}

void CertificateFile::read()
{
    m_reading = std::make_shared<FileReading>(m_path);
    const int serial = m_serial;
    connect(
        &m_reading->waiter(), &Waiter::resolved, this,
        [this, serial] {
            if (serial != m_serial || !m_reading)
                return;
            haveRead();
            Q_EMIT contentChanged();
        },
        Qt::QueuedConnection);
    m_reading->start();
    if (m_reading->waiter().settles(UnnoticedPause))
        haveRead();
}

void CertificateFile::haveRead()
{
    const std::shared_ptr<FileReading> reading = std::move(m_reading);
    m_reading.reset();
    // More than any certificate, bundle or request needs is something else.
    if (reading->problem() == FileProblem::TooLarge) {
        m_kind = OtherKind;
        return;
    }
    if (reading->problem() == FileProblem::Unreadable || reading->wasEmpty()) {
        m_kind = Unreadable;
        m_problem = Files().whyNotRead(m_path);
        return;
    }
    showContents(reading->contents());
}

void CertificateFile::showContents(const FileContents &contents)
{
    m_kind = kindOf(contents);
    m_broken = contents.broken;
    m_unreadKeys = contents.unreadKeys;
    m_items.setItems(fileItems(contents));
    if (m_kind == Unreadable) {
        //% "What this file holds is damaged. Ask for it to be sent again."
        m_problem = qtTrId("trivex-app-read-damaged");
    }
}

void CertificateFile::unlock(const QString &password)
{
    if (m_kind != BundleKind)
        return;
    // A later try overtakes one that still runs; that one's answer is not waited for.
    ++m_serial;
    m_unlocking = true;
    m_problem.clear();
    const int serial = m_serial;
    openKeyBundle(m_path, securedText(password.toUtf8()), this,
                  [this, serial](const LoadedBundle &loaded) {
                      opened(serial, loaded.bundle, loaded.result);
                  });
    Q_EMIT contentChanged();
}

void CertificateFile::opened(int serial, const QCA::KeyBundle &bundle, QCA::ConvertResult result)
{
    if (serial != m_serial)
        return;
    m_unlocking = false;
    m_unlocked = !bundle.isNull();
    m_items.setItems(m_unlocked ? fileItems(bundle) : QVector<FileItem>());
    if (!m_unlocked) {
        m_problem = bundleProblem(result);
    }
    Q_EMIT contentChanged();
}

} // namespace Trivex
