// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/storechanges.h"

#include "providers/pkcs11/operations/objectremover.h"
#include "providers/pkcs11/operations/objectwriter.h"
#include "qca/keys/pkeycontainer.h"

#include <atomic>
#include <utility>

namespace Trivex {

namespace {

QCA::PKeyBase *keyContextOf(const QCA::PrivateKey &key)
{
    auto *container =
        dynamic_cast<QCA::PKeyContext *>(const_cast<QCA::PrivateKey &>(key).context());
    return container ? container->key() : nullptr;
}

/// A token's own key is known by its public half; it is there already.
KeyMaterial materialOf(const QCA::PrivateKey &key)
{
    const QCA::PKeyBase *context = keyContextOf(key);
    return context ? Trivex::materialOf(context) : KeyMaterial();
}

BundleToWrite bundleFrom(const QCA::KeyBundle &bundle)
{
    BundleToWrite result;
    if (bundle.isNull())
        return result;
    result.name = bundle.name();
    const QCA::CertificateChain chain = bundle.certificateChain();
    for (const QCA::Certificate &certificate : chain)
        result.chain.push_back(certificate.toDER());
    result.key = materialOf(bundle.privateKey());
    return result;
}

Purpose purposeOf(const StoreChange &change)
{
    switch (change.kind) {
    case StoreChange::RemoveEntry:
    case StoreChange::RemoveKey:
        return Purpose::Remove;
    case StoreChange::ShowKeys:
        return Purpose::Look;
    case StoreChange::WriteCertificate:
    case StoreChange::WriteCertificates:
    case StoreChange::WriteBundle:
        break;
    }
    return Purpose::Write;
}

/// What a change has written so far. Whoever hears of its failure may do so on another thread while
/// the token's is still at work.
struct Written {
    std::atomic<int> count = 0;
    QString entryId; ///< of the token's thread alone, which tells of a success
};

/// The work of the change, for the token's thread. It puts into `written` what it has written.
Token::Work workOf(const StoreChange &change, const std::shared_ptr<Written> &written)
{
    if (change.kind == StoreChange::RemoveEntry) {
        return [entryId = change.entryId](TokenConnection &connection, Operation &operation) {
            removeEntry(connection, operation, entryId);
        };
    }
    if (change.kind == StoreChange::RemoveKey) {
        return [keyId = change.entryId](TokenConnection &connection, Operation &operation) {
            removeKey(connection, operation, keyId);
        };
    }
    if (change.kind == StoreChange::ShowKeys) {
        return [](TokenConnection &connection, Operation &operation) {
            connection.login(operation, TokenConnection::LoginFor::PrivateKeys);
        };
    }
    if (change.kind == StoreChange::WriteBundle) {
        return [written, bundle = bundleFrom(change.bundle)](TokenConnection &connection,
                                                             Operation &operation) {
            written->entryId = writeBundle(connection, operation, bundle);
        };
    }
    if (change.kind == StoreChange::WriteCertificates) {
        return [written, ders = change.certificates](TokenConnection &connection,
                                                     Operation &operation) {
            writeCertificates(connection, operation, ders, &written->count);
        };
    }
    const QByteArray der = change.certificate.isNull() ? QByteArray() : change.certificate.toDER();
    return [written, der](TokenConnection &connection, Operation &operation) {
        written->entryId = writeCertificate(connection, operation, der);
    };
}

} // namespace

bool startChange(TokenTable &tokens, const QString &keyStoreId, const StoreChange &change,
                 StoreChangeDone done)
{
    if (!tokens.store(keyStoreId))
        return false;
    const auto written = std::make_shared<Written>();
    tokens.post(Operation(purposeOf(change), keyStoreId, change.owner), workOf(change, written),
                [written, done = std::move(done)](const TokenError &error) {
                    StoreChangeResult result;
                    result.succeeded = error.kind == TokenError::NoError;
                    result.count = written->count;
                    if (result.succeeded)
                        result.entryId = written->entryId;
                    done(result);
                });
    return true;
}

} // namespace Trivex
