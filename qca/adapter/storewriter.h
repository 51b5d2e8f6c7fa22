// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>
#include <QtCrypto>

#include <memory>

namespace Trivex {

struct StoreChange;
struct StoreChangeResult;

/// Writes to key stores and removes from them. On our own tokens that goes past QCA, which does one
/// thing at a time with all stores of the process: a write that waits for its PIN there would hold
/// up every list and every other model. On other stores it is QCA's own asynchronous operation,
/// whose end the store itself signals.
///
/// Lives on one thread; its signals arrive there.
class TRIVEX_QCA_EXPORT StoreWriter : public QObject {
    Q_OBJECT
public:
    explicit StoreWriter(QObject *parent = nullptr);
    /// Refuses the questions of what it has started, from then on. Waits for nothing; what needs no
    /// answer goes on.
    ~StoreWriter() override;

    void write(QCA::KeyStore *store, const QCA::Certificate &certificate);
    void write(QCA::KeyStore *store, const QCA::KeyBundle &bundle);
    void remove(QCA::KeyStore *store, const QString &entryId);

    // The same for who knows the id of a store and has no object of QCA's for it: on our own tokens
    // and, for certificates, on the store of the user's files. False for every other store.
    bool write(const QString &storeId, const QCA::Certificate &certificate);
    bool write(const QString &storeId, const QCA::KeyBundle &bundle);
    /// Several (DER), on our own tokens alone; `writtenSeveral` tells of them.
    bool write(const QString &storeId, const QVector<QByteArray> &certificates);
    /// The key of that id (`TokenKeyFacts::id`), which has no certificate.
    bool removeKey(const QString &storeId, const QString &keyId);
    /// Logs in, so that the token shows the keys that it hides.
    bool showKeys(const QString &storeId);

    /// Asks what this object has started on our own tokens to end; it is told of the usual way.
    void cancel();

Q_SIGNALS:
    // Emitted for writes past QCA only, and never before the call that they belong to returns.

    /// `entryId` is empty when the write failed.
    void written(const QString &entryId);
    /// The first `count` of them are there, which are all of them with `success`.
    void writtenSeveral(int count, bool success);
    void removed(bool success);
    void shown(bool success);

private:
    struct Shared;
    void tell(int kind, const StoreChangeResult &result);
    /// False when the store is none of our tokens.
    bool start(const QString &storeId, StoreChange change);

    std::shared_ptr<Shared> m_shared;
};

} // namespace Trivex
