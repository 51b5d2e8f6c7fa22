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

constexpr int major = 1;
constexpr int minor = 0;

QObject *makeKeyStoreModel(QQmlEngine *engine, QJSEngine *)
{
    return new KeyStoreModel(engine);
}

template <typename Type> void uncreatable(const char *uri, const char *name, const char *reason)
{
    qmlRegisterUncreatableType<Type>(uri, major, minor, name, QLatin1String(reason));
}

void registerQmlTypes(const char *uri)
{
    qmlRegisterType<SignVerify>(uri, major, minor, "SignVerify");
    qmlRegisterType<LoaderFile>(uri, major, minor, "LoaderFile");
    qmlRegisterType<KeyStoreEntry>(uri, major, minor, "KeyStoreEntry");
    qmlRegisterType<CertificateModel>(uri, major, minor, "CertificateModel");
    qmlRegisterType<CertificateInfoModel>(uri, major, minor, "CertificateInfoModel");
    qmlRegisterType<CertificateRequest>(uri, major, minor, "CertificateRequest");
    qmlRegisterType<CertificateRequestModel>(uri, major, minor, "CertificateRequestModel");
    uncreatable<Certificate>(uri, "Certificate", "Not create Certificate");
    uncreatable<SecureMessage>(uri, "SecureMessage", "Not create SecureMessage");
    uncreatable<SecureMessageKey>(uri, "SecureMessageKey", "Not create SecureMessageKey");
    uncreatable<SecureMessageSignature>(uri, "SecureMessageSignature",
                                        "Not create SecureMessageSignature");
    qmlRegisterSingletonType<KeyStoreModel>(uri, major, minor, "KeyStoreModel", makeKeyStoreModel);
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
