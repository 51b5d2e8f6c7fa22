// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatedetails.h"

#include "qca/base/certificaterows.h"
#include "qca/base/plaintext.h"
#include "tools/checkdigits.h"
#include "tools/rows.h"
#include "tools/texts.h"
#include "tools/validity.h"

namespace Trivex {

namespace {

bool isFixed(CertificateRow row)
{
    return row == CertificateRow::SerialNumber || row == CertificateRow::PublicKeyId;
}

QString flagOf(CertificateRow row, const QString &value)
{
    static const struct {
        CertificateRow row;
        CheckDigits::Kind kind;
    } checked[] = {{CertificateRow::Inn, CheckDigits::Inn},
                   {CertificateRow::Snils, CheckDigits::Snils},
                   {CertificateRow::Ogrn, CheckDigits::Ogrn},
                   {CertificateRow::Innle, CheckDigits::Innle},
                   {CertificateRow::Ogrnip, CheckDigits::Ogrnip}};
    for (const auto &entry : checked) {
        if (entry.row == row)
            return CheckDigits::explain(entry.kind, value);
    }
    return {};
}

} // namespace

CertificateDetails::CertificateDetails(QObject *parent)
    : QObject(parent)
{
}

QAbstractItemModel *CertificateDetails::info() const
{
    return m_info;
}

void CertificateDetails::setInfo(QAbstractItemModel *info)
{
    if (m_info == info)
        return;
    m_info = info;
    m_labelRole = info ? roleNamed(*info, QStringLiteral("label")) : -1;
    m_valueRole = info ? roleNamed(*info, QStringLiteral("value")) : -1;
    m_sectionRole = info ? roleNamed(*info, QStringLiteral("section")) : -1;
    rebuild();
    Q_EMIT infoChanged();
}

QObject *CertificateDetails::certificate() const
{
    return m_certificate;
}

void CertificateDetails::setCertificate(QObject *certificate)
{
    if (m_certificate == certificate)
        return;
    m_certificate = certificate;
    rebuild();
    Q_EMIT certificateChanged();
}

QVariantList CertificateDetails::groups() const
{
    return m_groups;
}

QString CertificateDetails::value(const QModelIndex &index) const
{
    const auto row = CertificateRow(index.row());
    const bool isFrom = row == CertificateRow::ValidFrom;
    if (m_certificate && (isFrom || row == CertificateRow::ValidUntil)) {
        const char *name = isFrom ? "notValidBefore" : "notValidAfter";
        return Validity().dateTime(m_certificate->property(name).toDateTime());
    }
    const QString text = index.data(m_valueRole).toString();
    return isFixed(row) ? Texts::plainHex(text) : plainText(text);
}

QVariantMap CertificateDetails::row(const QModelIndex &index) const
{
    const auto row = CertificateRow(index.row());
    const QString text = value(index);
    return {{QStringLiteral("label"), index.data(m_labelRole)},
            {QStringLiteral("value"), text},
            {QStringLiteral("fixed"), isFixed(row)},
            {QStringLiteral("flag"), flagOf(row, text)}};
}

void CertificateDetails::rebuild()
{
    m_groups.clear();
    const int count = m_info ? m_info->rowCount() : 0;
    QString title;
    QVariantList rows;
    const auto close = [&] {
        if (!rows.isEmpty()) {
            m_groups +=
                QVariantMap{{QStringLiteral("title"), title}, {QStringLiteral("rows"), rows}};
        }
        rows.clear();
    };
    for (int i = 0; i < count; ++i) {
        const QModelIndex index = m_info->index(i, 0);
        const QString section = index.data(m_sectionRole).toString();
        if (section != title) {
            close();
            title = section;
        }
        if (!value(index).isEmpty())
            rows += row(index);
    }
    close();
    Q_EMIT groupsChanged();
}

QString CertificateDetails::text() const
{
    return textOf(m_groups);
}

QString CertificateDetails::textOf(const QVariantList &groups)
{
    QString result;
    for (const QVariant &group : groups) {
        const QVariantMap map = group.toMap();
        const QString title = map.value(QStringLiteral("title")).toString();
        if (!title.isEmpty())
            result += QLatin1Char('\n') + title + QLatin1Char('\n');
        const QVariantList rows = map.value(QStringLiteral("rows")).toList();
        for (const QVariant &row : rows) {
            const QVariantMap fields = row.toMap();
            result += fields.value(QStringLiteral("label")).toString() + QStringLiteral(": ")
                + fields.value(QStringLiteral("value")).toString() + QLatin1Char('\n');
        }
    }
    return result;
}

} // namespace Trivex
