// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requestsubject.h"

#include "qca/base/savedrequest.h"
#include "qca/x509/infotypes.h"
#include "tools/requestcontents.h"

namespace Trivex {

namespace {

/// An address stands in either of two attributes, of which a getter reads the first.
QList<QCA::CertificateInfoType> keysOf(int type)
{
    QList<QCA::CertificateInfoType> keys{infoType(type)};
    if (type == EmailInfo)
        keys += infoType(EmailLegacyInfo);
    return keys;
}

constexpr struct {
    EditLoss loss;
    const char *id;
} Refusals[] = {
    //% "Beside a value that you changed, the name in this request holds data that Trivex can't
    //% read. Saving would lose it. Leave that value as it was, or make a new request."
    {EditLoss::Name, QT_TRID_NOOP("trivex-app-edit-loses-name")},
    //% "The usages and further names in this request hold data that Trivex can't read. Saving would
    //% lose it. Leave them as they were, or make a new request."
    {EditLoss::Extensions, QT_TRID_NOOP("trivex-app-edit-loses-extensions")},
    //% "This request holds its usages or its further names twice, and programs differ in which of
    //% the two counts. Leave them as they were, or make a new request."
    {EditLoss::Doubled, QT_TRID_NOOP("trivex-app-edit-doubled")},
};

} // namespace

RequestSubject::RequestSubject(QObject *parent)
    : QObject(parent)
{
}

QString RequestSubject::value(QObject *request, int type) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    return saved ? infoValue(saved->requestInfo(), type) : QString();
}

bool RequestSubject::replace(QObject *request, int type, const QString &text) const
{
    auto *saved = qobject_cast<SavedRequest *>(request);
    if (!saved)
        return false;
    QCA::CertificateInfo info = saved->requestInfo();
    const QString shown = infoValue(info, type);
    for (const QCA::CertificateInfoType &key : keysOf(type))
        info.remove(key, shown);
    if (!text.isEmpty())
        info.insert(infoType(type), text);
    saved->setRequestInfo(info);
    return true;
}

QStringList RequestSubject::keyUsages(QObject *request) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    return saved ? RequestContents::keyUsagesOf(saved->requestedFields().usages) : QStringList();
}

QStringList RequestSubject::purposes(QObject *request) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    return saved ? RequestContents::purposesOf(saved->requestedFields().usages) : QStringList();
}

bool RequestSubject::setUsages(QObject *request, const QStringList &keyUsages,
                               const QStringList &purposes) const
{
    auto *saved = qobject_cast<SavedRequest *>(request);
    if (!saved)
        return false;
    saved->setRequestedFields(
        {saved->requestInfo(), RequestContents::constraints(keyUsages, purposes)});
    return true;
}

void RequestSubject::restore(QObject *request) const
{
    if (auto *saved = qobject_cast<SavedRequest *>(request))
        saved->restoreRequestedFields();
}

QString RequestSubject::refusal(QObject *request) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    const EditLoss loss = saved ? saved->editLoss() : EditLoss::None;
    for (const auto &one : Refusals) {
        if (one.loss == loss)
            return qtTrId(one.id);
    }
    return {};
}

bool RequestSubject::hasKey(QObject *request) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    return saved && saved->hasRequestKey();
}

QString RequestSubject::file(QObject *request) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    return saved ? saved->requestFile() : QString();
}

QStringList RequestSubject::others(QObject *request, const QList<int> &types) const
{
    const auto *saved = qobject_cast<SavedRequest *>(request);
    QCA::CertificateInfo info = saved ? saved->requestInfo() : QCA::CertificateInfo();
    for (const int type : types) {
        const QString shown = infoValue(info, type);
        if (!shown.isEmpty())
            info.remove(infoType(type), shown);
    }
    return info.values();
}

} // namespace Trivex
