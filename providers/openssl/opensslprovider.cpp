// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/opensslprovider.h"

#include "providers/openssl/cmscontext.h"
#include "providers/openssl/userstorecontext.h"
#include "qca/base/processend.h"
#include "qca/base/providers.h"
#include "qca/keys/dhkeycontext.h"
#include "qca/keys/dsakeycontext.h"
#include "qca/keys/eckeycontext.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/keys/rsakeycontext.h"
#include "qca/pkcs12/pkcs12context.h"
#include "qca/x509/certificatecontext.h"
#include "qca/x509/collectioncontext.h"
#include "qca/x509/crlcontext.h"
#include "qca/x509/makecertificate.h"
#include "qca/x509/requestcontext.h"

namespace Trivex {

namespace {

using Context = QCA::Provider::Context;

struct Feature {
    const char *name;
    Context *(*create)(QCA::Provider *provider);
};

template <class T> Context *create(QCA::Provider *provider)
{
    return new T(provider);
}

Context *createContainer(QCA::Provider *provider)
{
    return new PKeyContainer(softwareKeyProvider(provider), provider, nullptr);
}

constexpr Feature Features[] = {
    {"cert", &create<CertificateContext>},
    {"csr", &create<RequestContext>},
    {"crl", &create<CrlContext>},
    {"certcollection", &create<CollectionContext>},
    {"pkcs12", &create<Pkcs12Context>},
    {"cms", &create<CmsContext>},
    {"pkey", &createContainer},
    {"rsa", &create<RsaKeyContext>},
    {"dsa", &create<DsaKeyContext>},
    {"dh", &create<DhKeyContext>},
    {"ec", &create<EcKeyContext>},
    {"keystorelist", &create<UserStoreContext>},
};

} // namespace

OpensslProvider::OpensslProvider()
{
    setCertificateProvider(this);
}

OpensslProvider::~OpensslProvider()
{
    if (certificateProvider() == this)
        setCertificateProvider(nullptr);
}

void OpensslProvider::init()
{
    // QCA makes its providers on the thread that starts it, the main one as a rule.
    ProcessEnd::watchThisThread();
    QCA::setProviderPriority(name(), 0);
}

int OpensslProvider::qcaVersion() const
{
    return QCA_VERSION;
}

QString OpensslProvider::name() const
{
    return opensslProviderName();
}

QStringList OpensslProvider::features() const
{
    QStringList names;
    for (const Feature &feature : Features)
        names += QString::fromLatin1(feature.name);
    return names;
}

QCA::Provider::Context *OpensslProvider::createContext(const QString &type)
{
    for (const Feature &feature : Features) {
        if (type == QLatin1String(feature.name))
            return feature.create(this);
    }
    return nullptr;
}

QVariantMap OpensslProvider::defaultConfig() const
{
    return {{QStringLiteral("formtype"), QStringLiteral("http://trivex/forms/openssl#1.0")}};
}

} // namespace Trivex
