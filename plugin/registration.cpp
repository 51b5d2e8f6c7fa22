// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "plugin/registration.h"

#include "certificates/certificate.h"
#include "certificates/certificateinfomodel.h"
#include "certificates/certificatemodel.h"
#include "certificates/keystoreentry.h"
#include "certificates/securemessage.h"
#include "certificates/securemessagekey.h"
#include "certificates/securemessagesignature.h"
#include "keystores/keystoremodel.h"
#include "requests/certificaterequest.h"
#include "requests/certificaterequestmodel.h"
#include "signing/loaderfile.h"
#include "signing/signverify.h"

#include <QFile>
#include <QQmlEngine>

namespace {

constexpr int Major = 1;
constexpr int Minor = 0;

QObject *makeKeyStoreModel(QQmlEngine *engine, QJSEngine *)
{
    return new KeyStoreModel(engine);
}

template <typename Type> void uncreatable(const char *uri, const char *name, const char *reason)
{
    qmlRegisterUncreatableType<Type>(uri, Major, Minor, name, QLatin1String(reason));
}

void registerQmlTypes(const char *uri)
{
    qmlRegisterType<SignVerify>(uri, Major, Minor, "SignVerify");
    qmlRegisterType<LoaderFile>(uri, Major, Minor, "LoaderFile");
    qmlRegisterType<KeyStoreEntry>(uri, Major, Minor, "KeyStoreEntry");
    qmlRegisterType<CertificateModel>(uri, Major, Minor, "CertificateModel");
    qmlRegisterType<CertificateInfoModel>(uri, Major, Minor, "CertificateInfoModel");
    qmlRegisterType<CertificateRequest>(uri, Major, Minor, "CertificateRequest");
    qmlRegisterType<CertificateRequestModel>(uri, Major, Minor, "CertificateRequestModel");
    uncreatable<Certificate>(uri, "Certificate", "Not create Certificate");
    uncreatable<SecureMessage>(uri, "SecureMessage", "Not create SecureMessage");
    uncreatable<SecureMessageKey>(uri, "SecureMessageKey", "Not create SecureMessageKey");
    uncreatable<SecureMessageSignature>(uri, "SecureMessageSignature",
                                        "Not create SecureMessageSignature");
    qmlRegisterSingletonType<KeyStoreModel>(uri, Major, Minor, "KeyStoreModel", makeKeyStoreModel);
}

void registerMetaTypes()
{
    qRegisterMetaType<LoaderFile *>("LoaderFile*");
    qRegisterMetaType<KeyStoreEntry *>("KeyStoreEntry*");
    qRegisterMetaType<Certificate *>("Certificate*");
    qRegisterMetaType<QCA_KeyStoreEntry *>("QCA_KeyStoreEntry*");
    qRegisterMetaType<KeyStoreItem *>("KeyStoreItem*");
    qRegisterMetaType<SecureMessageKey *>("SecureMessageKey*");
    qRegisterMetaType<SecureMessageSignature *>("SecureMessageSignature*");
    // A list value, in spite of its name; QML iterates it.
    qRegisterMetaType<QList<Certificate *>>("CertificateList*");
    qRegisterMetaType<CertificateRequest *>("CertificateRequest*");
    qRegisterMetaType<QFile *>("QFile*");
    qRegisterMetaType<KeyStoreModel *>("KeyStoreModel*");
    qRegisterMetaType<QByteArray>("QByteArray");
}

} // namespace

void registerTrivexTypes(const char *uri)
{
    registerQmlTypes(uri);
    registerMetaTypes();
}
