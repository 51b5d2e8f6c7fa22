// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "keystores/keystoremodel.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/fakes/provider/fakeprovider.h"

#include <memory>

namespace TrivexTest {

/// What the tests of the key store model share: a scripted token provider under the name of the
/// real one, and no stores but its own.
class KeyStoreFixture : public QObject {
    Q_OBJECT
protected:
    /// Makes the certificate and the bundle, and takes all stock stores away.
    void prepare();
    /// Installs the scripted provider, if it isn't yet; without a configuration.
    void install();
    /// Gives it one, so that a model calls it ready.
    void configure();

    FakeStores &stores() { return *m_fake->stores; }
    FakeEntry certificate(const char *id, const QCA::Certificate &value);
    FakeEntry certificate(const char *id) { return certificate(id, m_certificate); }
    FakeEntry keyed(const char *id);
    void addStore(const char *id, const char *name, const QList<FakeEntry> &entries = {},
                  QCA::KeyStore::Type type = QCA::KeyStore::SmartCard);
    /// The entry ids of the rows.
    static QStringList ids(const KeyStoreModel &model);

    /// Lets go of all that is QCA's, and of QCA.
    void endQca();

    std::unique_ptr<QCA::Initializer> m_qca = std::make_unique<QCA::Initializer>();
    FakeProvider *m_fake = nullptr;
    CertificateFactory m_factory;
    QCA::Certificate m_certificate;
    QCA::KeyBundle m_bundle;
};

} // namespace TrivexTest
