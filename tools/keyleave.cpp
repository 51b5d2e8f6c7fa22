// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keyleave.h"

#include "qca/adapter/entries.h"
#include "qca/tokens/tokens.h"
#include "tools/rowentry.h"
#include "tools/rows.h"

namespace Trivex {

namespace {

struct ReasonText {
    KeyLeave::Leave leave;
    const char *id;
};

constexpr ReasonText ReasonTexts[] = {
    //% "There is no private key."
    {KeyLeave::NoKey, QT_TRID_NOOP("trivex-app-leave-no-key")},
    {KeyLeave::Stays, "trivex-app-cause-key-stays"},
    //% "The private key is encrypted in the file."
    {KeyLeave::IsLocked, QT_TRID_NOOP("trivex-app-leave-locked")},
    //% "The certificate of the key is not in the file."
    {KeyLeave::IsAlone, QT_TRID_NOOP("trivex-app-leave-alone")},
};

KeyLeave::Leave leaveOnToken(const TokenStatus &token, const QString &entryId)
{
    for (const TokenKeyFacts &key : token.keyFacts) {
        if (key.entryId == entryId && key.leave != TokenKeyFacts::LeaveUnknown)
            return key.leave == TokenKeyFacts::Leaves ? KeyLeave::Leaves : KeyLeave::Stays;
    }
    return KeyLeave::AsksToken;
}

} // namespace

KeyLeave::KeyLeave(QObject *parent)
    : QObject(parent)
{
}

int KeyLeave::ofRow(EntryModel *entries, const QString &identity)
{
    const QCA::KeyStoreEntry *entry = wrappedBundle(entries, identity);
    if (!entry)
        return NoKey;
    const TokenStatus token = TokenMonitor::token(entryStoreId(*entry));
    return token.keyStoreId.isEmpty() ? Leaves : leaveOnToken(token, entryId(*entry));
}

int KeyLeave::ofItem(FileItemModel *items, int row)
{
    if (!items || row < 0 || row >= items->items().size())
        return NoKey;
    const FileItem &item = items->items().at(row);
    if (item.kind == FileObject::PrivateKey)
        return item.key.isNull() ? IsLocked : IsAlone;
    const bool hasKey = item.kind == FileObject::Certificate && !item.key.isNull();
    return hasKey ? Leaves : NoKey;
}

QString KeyLeave::reason(int leave)
{
    for (const ReasonText &text : ReasonTexts) {
        if (text.leave == leave)
            return qtTrId(text.id);
    }
    return {};
}

const QCA::KeyStoreEntry *wrappedBundle(const EntryModel *entries, const QString &identity)
{
    const int row = entries ? entries->rowOfIdentity(identity) : -1;
    if (row < 0)
        return nullptr;
    const int role = roleNamed(*entries, QStringLiteral("keyStoreEntry"));
    const QCA::KeyStoreEntry *entry = entryAt(*entries, row, role);
    return entry && entryType(*entry) == QCA::KeyStoreEntry::TypeKeyBundle ? entry : nullptr;
}

} // namespace Trivex
