// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatedetails.h"

#include "tools/checkdigits.h"
#include "tools/texts.h"
#include "tools/validity.h"

namespace Trivex {

namespace {

enum InfoRole { LabelRole = 257, ValueRole, SectionRole };

// Row numbers of the info model's table.
constexpr int SerialRow = 1;
constexpr int InnRow = 11;
constexpr int SnilsRow = 12;
constexpr int OgrnRow = 13;
constexpr int InnleRow = 14;
constexpr int OgrnipRow = 15;
constexpr int FromRow = 17;
constexpr int UntilRow = 18;
constexpr int KeyIdRow = 19;

bool isFixed(int row)
{
    return row == SerialRow || row == KeyIdRow;
}

QString flagOf(int row, const QString &value)
{
    static const struct {
        int row;
        CheckDigits::Kind kind;
    } checked[] = {{InnRow, CheckDigits::Inn},
                   {SnilsRow, CheckDigits::Snils},
                   {OgrnRow, CheckDigits::Ogrn},
                   {InnleRow, CheckDigits::Innle},
                   {OgrnipRow, CheckDigits::Ogrnip}};
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
    if (m_info)
        disconnect(m_info, nullptr, this, nullptr);
    m_info = info;
    if (info)
        connect(info, SIGNAL(infoChanged()), this, SLOT(rebuild()));
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

QString CertificateDetails::value(int number, const QModelIndex &index) const
{
    if (m_certificate && (number == FromRow || number == UntilRow)) {
        const char *name = number == FromRow ? "notValidBefore" : "notValidAfter";
        return Validity().dateTime(m_certificate->property(name).toDateTime());
    }
    const QString text = index.data(ValueRole).toString();
    return isFixed(number) ? Texts::plainHex(text) : text;
}

QVariantMap CertificateDetails::row(int number, const QModelIndex &index) const
{
    const QString text = value(number, index);
    return {{QStringLiteral("label"), index.data(LabelRole)},
            {QStringLiteral("value"), text},
            {QStringLiteral("fixed"), isFixed(number)},
            {QStringLiteral("flag"), flagOf(number, text)}};
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
        const QString section = index.data(SectionRole).toString();
        if (section != title) {
            close();
            title = section;
        }
        if (!value(i, index).isEmpty())
            rows += row(i, index);
    }
    close();
    Q_EMIT groupsChanged();
}

QString CertificateDetails::text() const
{
    QString result;
    for (const QVariant &group : m_groups) {
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
