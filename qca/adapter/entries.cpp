// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/entries.h"

#include "qca/adapter/reading.h"

namespace Trivex {

namespace {

const QCA::KeyStoreEntryContext *contextOf(const QCA::KeyStoreEntry &entry)
{
    return dynamic_cast<const QCA::KeyStoreEntryContext *>(entry.context());
}

} // namespace

int entryType(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context ? int(context->type()) : -1;
}

QString entryId(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context ? context->id() : QString();
}

QString entryName(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context ? context->name() : QString();
}

QString entryStoreId(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context ? context->storeId() : QString();
}

QString entryStoreName(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context ? context->storeName() : QString();
}

bool isEntryAvailable(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context && context->isAvailable();
}

QCA::KeyBundle entryKeyBundle(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context && context->type() == QCA::KeyStoreEntry::TypeKeyBundle ? context->keyBundle()
                                                                           : QCA::KeyBundle();
}

QCA::Certificate entryCertificate(const QCA::KeyStoreEntry &entry)
{
    const auto *context = contextOf(entry);
    return context && context->type() == QCA::KeyStoreEntry::TypeCertificate
        ? context->certificate()
        : QCA::Certificate();
}

QCA::PublicKey requestPublicKey(const QCA::CertificateRequest &request)
{
    const QCA::CertificateRequest own = ownRequest(request);
    return own.isNull() ? QCA::PublicKey() : own.subjectPublicKey();
}

RequestedFields requestedFields(const QCA::CertificateRequest &request)
{
    const QCA::CertificateRequest own = ownRequest(request);
    return own.isNull() ? RequestedFields() : RequestedFields{own.subjectInfo(), own.constraints()};
}

} // namespace Trivex
