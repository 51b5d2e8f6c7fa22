// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "keystores/bundlearrivals.h"
#include "keystores/importdesk.h"
#include "keystores/storerows.h"
#include "qca/adapter/storewriter.h"

#include <QPointer>
#include <QVariantMap>
#include <QVector>
#include <QtCrypto>

#include <memory>

class QcaAskerThread;
class QcaHandler;

/// Every certificate and key bundle of the key stores that QCA offers, one row each; a singleton
/// in QML.
///
///     ListView { model: KeyStoreModel; delegate: Text { text: name + " (" + issuer + ")" } }
///
/// | role | number | content |
/// |---|---|---|
/// | "name" | 257 | the common name, else the department, else a text for "unnamed" |
/// | "keyStoreEntry" | 258 | the row's `KeyStoreEntry` |
/// | "certificate" | 259 | its `Certificate` |
/// | "issuer" | 260 | the issuer, else the organization, else a text for "unknown" |
/// | "type" | 261 | the store's kind, a value of `Type` |
/// | "entryId" | 262 | the entry's id, unique within its store |
///
/// The objects belong to the rows. Stores are read in the background and rows come and go with
/// them, those of a long list a few at each turn of the event loop: the rows of one store together,
/// stores in the order in which they report. Writing and removing end with a signal. GUI thread
/// only.
class KeyStoreModel : public StoreRows {
    Q_OBJECT
    Q_INTERFACES(Trivex::EntryRows)
    /// True while stores are being looked for.
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY busyChanged)
    /// Where imports can go, a `ComboBoxModel`.
    Q_PROPERTY(QAbstractListModel *certLocation READ certLocation NOTIFY certLocationChanged)
    // Declared constant although they change: read them when a load has returned.
    /// `Certificate.fileName` of the certificate that was loaded for an import.
    Q_PROPERTY(QString importedCertificateFileName READ importedCertificateFileName CONSTANT)
    /// Whether the loaded certificate is a root, as `Certificate.isRoot`.
    Q_PROPERTY(bool importedCertificateIsRoot READ importedCertificateIsRoot CONSTANT)
    /// The common name of the loaded certificate.
    Q_PROPERTY(QString importedCertificateCommonName READ importedCertificateCommonName CONSTANT)
    /// Why the last failed load of a key bundle failed; a later success does not clear it.
    Q_PROPERTY(Error error READ error CONSTANT)
public:
    /// Kinds of store (0 to 4 as `QCA::KeyStore::Type`) and categories of certificates.
    enum Type {
        System = 0,
        User = 1,
        Application = 2,
        SmartCard = 3,
        PGPKeyring = 4,
        Request = 5,
        Imported = 6,
        RootImported = 7,
    };
    Q_ENUM(Type)

    /// Where a key lives; the ids of the rows of `certLocation`.
    enum Location { HW = 0, TrustZone = 1, SoftHSM = 2, Unknown = 3 };
    Q_ENUM(Location)

    enum Error { ErrorDecode = 0, ErrorPassphrase = 1, ErrorFile = 2, ErrorUnknown = 3 };
    Q_ENUM(Error)

    explicit KeyStoreModel(QObject *parent = nullptr);
    /// Refuses the questions of the operations that it has started, from then on, and waits for no
    /// operation longer than a moment; those that need no answer go on. Waits for the asker thread
    /// 3000 ms at most.
    ~KeyStoreModel() override;

    bool isBusy() const { return m_busy; }
    QAbstractListModel *certLocation();
    /// The same, typed, for native callers.
    ComboBoxModel *certLocationModel() { return m_desk.locations(); }
    QString importedCertificateFileName() const;
    bool importedCertificateIsRoot() const;
    QString importedCertificateCommonName() const;
    Error error() const;

    // For the requests; not for QML.

    /// The thread whose handler answers from what was stored; its handler is null until it runs.
    QcaAskerThread *askerThread() const { return m_askerThread; }
    /// The token provider, as an object of the model's own; null when there is none.
    QCA::Provider *provider() const { return m_provider.get(); }
    /// True when the provider was found and configured.
    bool isProviderReady() const { return m_providerReady; }
    /// The first open store of that name; null when there is none.
    QCA::KeyStore *keyStoreByName(const QString &name) const;
    int keyStoreCount() const { return m_keyStores.size(); }
    /// The type of the store at `index`; -1 behind the last and for a store that has gone.
    int keyStoreType(int index) const;
    /// The name of the store at `index`; empty behind the last and for a store that has gone.
    QString keyStoreName(int index) const;
    void setBusy(bool busy);

Q_SIGNALS:
    /// The key stores have been found, and `isBusy` is false.
    void keysReady();
    /// Key stores are being looked for: `isBusy` becomes true.
    void keysNotReady();
    /// Looking for key stores has begun, or ended: see `isBusy`.
    void busyChanged();
    /// Declared for QML, never emitted.
    void typeModelChanged();
    void certLocationChanged();
    /// An import has ended; `isEmpty` is true when it failed.
    void entryWrittenChanged(bool isEmpty);
    /// A key bundle with the public key `pkey` has appeared on a token.
    void keyBundleWritten(QCA::PublicKey pkey);
    /// A removal has ended.
    void entryRemovedChanged(bool success);

private Q_SLOTS:
    void ksAvailable(QString keyStoreId);
    void entryWritten(QString entryId);
    void ksUpdated();
    void ksUnavailable();
    void ksmBusyStarted();
    void ksmBusyFinished();
    void entryRemoved(bool success);

public:
    /// Loads the PEM certificate for the next import. False when there is none in the file, or it
    /// is the one loaded already.
    Q_INVOKABLE bool certificateFromPEMFile(QString path);
    /// Loads the key bundle for the next import. On failure false, and `error` says why. Never
    /// asks: a missing password is a wrong one.
    ///
    /// Where the key takes long to derive, the event loop runs on meanwhile. Calls made there are
    /// independent: each has loaded its own bundle when it returns, the inner one first. False with
    /// `ErrorUnknown` when the application ends before; false, too, when the model has gone.
    Q_INVOKABLE bool keyBundleFromFile(QString path, QString password);
    /// Forgets the certificate that was loaded for an import.
    Q_INVOKABLE void resetImportedCertificate();
    /// Forgets the key bundle that was loaded for an import.
    Q_INVOKABLE void resetImportedKeyBundle();
    /// Writes the loaded certificate to the chosen location; `entryWrittenChanged` follows.
    Q_INVOKABLE void importCertificate();
    /// Writes the loaded key bundle to the chosen location; `entryWrittenChanged` follows.
    Q_INVOKABLE void importKeyBundle();
    /// Chooses the row of `certLocation` that imports go to.
    Q_INVOKABLE void setCertLocationId(int id);
    /// Removes the first entry of that id from its store; `entryRemovedChanged` follows.
    Q_INVOKABLE void removeCertificate(QString entryId);

private:
    void setUpProvider();
    void openKnownStores();
    void connectStore(QCA::KeyStore *keyStore);
    /// Follows the entries of a store of QCA's; those of the system's list are read by ourselves,
    /// because QCA's store thread, which all stores need, would be busy with them for long.
    void startFollowing(QCA::KeyStore *keyStore);
    void followSystemList(QCA::KeyStore *keyStore);
    void takeEntries(const QPointer<QCA::KeyStore> &keyStore,
                     const QList<QCA::KeyStoreEntry> &entries);
    void refreshBusy();

    void bundleArrives(const QCA::KeyStoreEntry &entry) override { m_arrivals.note(entry); }
    /// Makes the public key only where somebody listens.
    void announceBundle(const QCA::KeyStoreEntry &entry);

    QCA::KeyStore *importTarget() const;
    template <typename Content> void importIntoTarget(const Content &content);
    bool isRemovable(const KeyStoreItem &item) const;
    QcaHandler *handler() const;

    QCA::KeyStoreManager m_keyStoreManager;
    QVector<QPointer<QCA::KeyStore>> m_keyStores;
    bool m_busy = false;
    bool m_providerReady = false;
    /// Owned; a plain pointer, because a thread that outlives its time is let go.
    QcaAskerThread *m_askerThread;
    std::unique_ptr<Trivex::StoreWriter> m_writer;
    /// An object of our own that forwards: QCA's must not be deleted with the model.
    std::unique_ptr<QCA::Provider> m_provider;
    QVariantMap m_providerConfig;
    ImportDesk m_desk;
    BundleArrivals m_arrivals;
};
