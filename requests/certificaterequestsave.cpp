// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Making, signing, saving, loading and exporting the request itself.
#include "requests/certificaterequest.h"

#include "certificates/enginekeeper.h"
#include "keystores/keystoremodel.h"
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/base/atomicfile.h"
#include "qca/base/filenames.h"
#include "qca/base/infotypes.h"
#include "qca/base/providers.h"
#include "qca/base/regularfile.h"
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "requests/requestfiles.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

constexpr int saveAttempts = 5;

bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool isSameFile(const QString &a, const QString &b)
{
    return !a.isEmpty() && !b.isEmpty()
        && QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

bool canMakeRequests(const QString &provider)
{
    return QCA::isSupported(qPrintable(Trivex::requestExtension()), provider);
}

/// A request signed by `key`, null where that fails. Stock QCA takes any other provider without a
/// word where ours is missing; that one would read the key as one of its own, so it gets none but
/// those.
///
/// By value: an event loop may run meanwhile, and the caller's object go.
QCA::CertificateRequest signedRequest(QCA::CertificateOptions options, QCA::PrivateKey key)
{
    const QString wanted = Trivex::pkcs11ProviderName();
    if (!canMakeRequests(wanted) && (!key.provider() || !canMakeRequests(key.provider()->name())))
        return {};
    const QCA::CertificateRequest made(options, key, wanted);
    const bool isTokenKey = !Trivex::keyStoreIdOf(key).isEmpty();
    if (isTokenKey && (!made.provider() || made.provider()->name() != wanted))
        return {};
    return made;
}

/// The private key of the bundle in `store` that belongs to `key`.
QCA::PrivateKey bundleKey(QCA::KeyStore *store, const QCA::PublicKey &key)
{
    const auto entries = store->entryList();
    for (const QCA::KeyStoreEntry &entry : entries) {
        const QCA::KeyBundle bundle = Trivex::entryKeyBundle(entry);
        if (!bundle.isNull()
            && Trivex::isSamePublicKey(Trivex::publicKeyOf(bundle.privateKey()), key))
            return bundle.privateKey();
    }
    return {};
}

} // namespace

/// What a save works on: signing may run an event loop in which the object can go away, and an
/// edited request is kept only when its file is written.
struct CertificateRequest::Save {
    QCA::CertificateRequest request;
    QString commonName;
    QString oldPath; ///< of the file to replace; empty for none
    QString path;
    QString fileName;

    void findName();
    bool write();
};

void CertificateRequest::Save::findName()
{
    // The old file is as good as gone, so its name is free.
    const QString wanted = Trivex::requestDirectory() + Trivex::requestFileName(commonName);
    path = Trivex::freePath(wanted, [this](const QString &candidate) {
        return isTaken(candidate) && !isSameFile(candidate, oldPath);
    });
    fileName = QFileInfo(path).fileName();
}

bool CertificateRequest::Save::write()
{
    const QByteArray content = request.toPEM().toUtf8();
    if (content.isEmpty())
        return false;
    auto result = Trivex::WriteResult::Exists;
    // Another process may take the name in between.
    for (int i = 0; i < saveAttempts && result == Trivex::WriteResult::Exists; ++i) {
        findName();
        result = Trivex::writeAtomically(path, content, isSameFile(path, oldPath));
    }
    if (result != Trivex::WriteResult::Written)
        return false;
    if (!oldPath.isEmpty() && !isSameFile(path, oldPath))
        Trivex::removeFile(oldPath);
    return true;
}

void CertificateRequest::createRequest()
{
    const EngineKeeper keeper(this);
    if (m_subjectInfo.isEmpty()) {
        qWarning("Certificate request info is empty!");
        return;
    }
    m_options.setInfo(m_subjectInfo);
    if (m_privateKey.isNull()) {
        qWarning("Error: missing private key");
        Q_EMIT missingPrivateKey();
        return;
    }
    const QPointer<CertificateRequest> self(this);
    const QCA::CertificateRequest made = signedRequest(m_options, m_privateKey);
    if (!self)
        return;
    m_request = made;
    if (QCA::isSupported(qPrintable(Trivex::requestExtension())))
        saveRequest();
    else
        qWarning() << "Error: need'" << Trivex::requestExtension() << "' feature";
}

bool CertificateRequest::saveRequest()
{
    const EngineKeeper keeper(this);
    Save save;
    save.request = m_request;
    save.commonName = commonName();
    if (m_request.isNull() || save.commonName.isEmpty()) {
        qWarning("Certificate request not created!");
        return false;
    }
    const QPointer<CertificateRequest> self(this);
    if (m_editMode && !m_path.isEmpty() && QFile::exists(m_path)) {
        save.oldPath = m_path;
        if (!resign(&save))
            return false;
    }
    if (!save.write()) {
        qWarning() << "File: " << save.fileName << " not created!";
        return false;
    }
    if (!self)
        return true;
    m_request = save.request;
    m_path = save.path;
    m_fileName = save.fileName;
    Q_EMIT requestCreated();
    return true;
}

/// Signs the edited subject. Without the key the request stays as it was. False when it can't be
/// signed although the key is there; the file stays then.
bool CertificateRequest::resign(Save *save)
{
    const QPointer<CertificateRequest> self(this);
    const QString file = m_fileName;
    QCA::CertificateOptions options = m_options;
    options.setInfo(m_subjectInfo);
    QCA::PrivateKey key = m_privateKey;
    const QCA::PrivateKey found = findPrivateKey(save->request);
    if (!found.isNull())
        key = found;
    if (self) {
        m_options = options;
        m_privateKey = key;
    }
    if (key.isNull()) {
        qWarning().noquote()
            << QStringLiteral("PrivateKey of certificate request: %1 is null").arg(file);
        if (self)
            Q_EMIT missingPrivateKey();
        return true;
    }
    const QCA::CertificateRequest made = signedRequest(options, key);
    if (!made.isNull())
        save->request = made;
    else
        qWarning() << "File: " << Trivex::requestFileName(save->commonName) << " not created!";
    return !made.isNull();
}

QList<QPointer<QCA::KeyStore>> CertificateRequest::locationStores() const
{
    QList<QPointer<QCA::KeyStore>> stores;
    for (int row = 0; m_locationModel && m_keyStoreModel && row < m_locationModel->rowCount();
         ++row) {
        const QModelIndex index = m_locationModel->index(row, 0);
        const QString name = m_locationModel->data(index, ComboBoxModel::TypeRole).toString();
        if (QCA::KeyStore *store = m_keyStoreModel->keyStoreByName(name))
            stores.append(store);
    }
    return stores;
}

QCA::PrivateKey CertificateRequest::findPrivateKey(const QCA::CertificateRequest &request) const
{
    const QCA::PublicKey key = Trivex::requestPublicKey(request);
    if (key.isNull()) {
        qWarning().noquote()
            << QStringLiteral("PublicKey of certificate request: %1 is null").arg(m_fileName);
        return {};
    }
    const QCA::PrivateKey own = m_privateKey;
    const auto stores = locationStores();
    for (const auto &store : stores) {
        const QCA::PrivateKey found = store ? bundleKey(store, key) : QCA::PrivateKey();
        if (!found.isNull())
            return found;
    }
    if (Trivex::isSamePublicKey(Trivex::publicKeyOf(own), key))
        return own;
    // A key whose certificate has not come yet is in no list; its token knows it.
    for (const auto &store : stores) {
        const QCA::PrivateKey found =
            store ? Trivex::findTokenKey(store->id(), key) : QCA::PrivateKey();
        if (!found.isNull())
            return found;
    }
    return {};
}

void CertificateRequest::setEditMode(bool status)
{
    m_editMode = status;
    saveRequest();
}

QString CertificateRequest::requestPath()
{
    return Trivex::requestDirectory();
}

void CertificateRequest::restoreRequestInfo()
{
    m_subjectInfo = Trivex::requestSubject(m_request);
}

bool CertificateRequest::hasRequestKey() const
{
    return !findPrivateKey(m_request).isNull();
}

void CertificateRequest::load(const QString &path)
{
    const auto contents = Trivex::readRegularFile(path);
    if (!contents || !QCA::isSupported(qPrintable(Trivex::requestExtension())))
        return;
    m_request = Trivex::requestFromPem(*contents);
    if (m_request.isNull())
        return;
    m_path = path;
    m_subjectInfo = Trivex::requestSubject(m_request);
    m_fileName = Trivex::requestFileName(commonName());
}

bool CertificateRequest::exportToFile(const QString &directory)
{
    // One that could not be saved has no file name yet.
    const bool isNamed = m_request.isNull() || !fileName().isEmpty();
    const QString name =
        isNamed ? Trivex::safeFileName(fileName()) : Trivex::requestFileName(commonName());
    const QString path = directory + QDir::separator() + name;
    if (m_request.isNull() || !Trivex::writeFile(path, m_request.toPEM().toUtf8())) {
        qWarning() << "File: " << path << " not exported!";
        return false;
    }
    Q_EMIT fileExported();
    return true;
}
