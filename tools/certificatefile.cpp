// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatefile.h"

#include "qca/adapter/keybundlefile.h"
#include "qca/base/regularfile.h"
#include "qca/base/securedtext.h"
#include "tools/files.h"

namespace Trivex {

namespace {

/// What a file of single objects is, by what is among them.
constexpr struct {
    FileObject::Kind object;
    CertificateFile::Kind file;
} ObjectKinds[] = {
    {FileObject::Certificate, CertificateFile::CertificateKind},
    {FileObject::Request, CertificateFile::RequestKind},
    {FileObject::RevocationList, CertificateFile::RevocationListKind},
    {FileObject::PrivateKey, CertificateFile::PrivateKeyKind},
    {FileObject::PublicKey, CertificateFile::PublicKeyKind},
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

CertificateFile::~CertificateFile() = default;

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
    m_kind = None;
    m_problem.clear();
    m_unlocked = false;
    m_unlocking = false;
    m_broken = 0;
    m_items.setItems({});
}

void CertificateFile::read()
{
    FileProblem problem = FileProblem::None;
    auto bytes = readRegularFile(m_path, &problem);
    // More than any certificate, bundle or request needs is something else.
    if (problem == FileProblem::TooLarge) {
        m_kind = OtherKind;
        return;
    }
    if (!bytes || bytes->isEmpty()) {
        m_kind = Unreadable;
        m_problem = Files().whyNotRead(m_path);
        return;
    }
    const FileContents contents = readFileContents(*bytes);
    if (contents.has(FileObject::PrivateKey))
        bytes->fill(0);
    take(contents);
}

void CertificateFile::take(const FileContents &contents)
{
    m_kind = kindOf(contents);
    m_broken = contents.broken;
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
