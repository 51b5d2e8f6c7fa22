// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatedetails.h"

#include "qca/asn1/attributeids.h"
#include "qca/base/certificaterows.h"
#include "qca/base/encodedobject.h"
#include "qca/base/plaintext.h"
#include "qca/base/savedrequest.h"
#include "qca/describe/structure.h"
#include "tools/rows.h"
#include "tools/shownvalues.h"
#include "tools/texts.h"
#include "tools/validity.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Of a group that a description has none like.
constexpr int NoTopic = -1;

bool isFixed(CertificateRow row)
{
    return row == CertificateRow::SerialNumber || row == CertificateRow::PublicKeyId;
}

/// The rows whose values a description has too, with its names for them.
struct RowId {
    CertificateRow row;
    const char *id;
};

constexpr RowId RowIds[] = {
    {CertificateRow::SerialNumber, ShownId::SerialNumber},
    {CertificateRow::SignatureAlgorithm, ShownId::SignatureAlgorithm},
    {CertificateRow::SubjectName, Oid::CommonName},
    {CertificateRow::Organization, Oid::Organization},
    {CertificateRow::Email, Oid::EmailAddress},
    {CertificateRow::OrganizationalUnit, Oid::OrganizationalUnit},
    {CertificateRow::CountryCode, Oid::Country},
    {CertificateRow::State, Oid::State},
    {CertificateRow::Locality, Oid::Locality},
    {CertificateRow::Address, Oid::Street},
    {CertificateRow::Inn, Oid::Inn},
    {CertificateRow::Snils, Oid::Snils},
    {CertificateRow::Ogrn, Oid::Ogrn},
    {CertificateRow::Innle, Oid::Innle},
    {CertificateRow::Ogrnip, Oid::Ogrnip},
    {CertificateRow::IdentificationKind, Oid::IdentificationKind},
    {CertificateRow::ValidFrom, ShownId::ValidFrom},
    {CertificateRow::ValidUntil, ShownId::ValidUntil},
};

QByteArray idOf(CertificateRow row)
{
    const auto *const found = std::find_if(std::begin(RowIds), std::end(RowIds),
                                           [row](const RowId &one) { return one.row == row; });
    return found == std::end(RowIds) ? QByteArray() : QByteArray(found->id);
}

/// What the rows of the section that begins with `row` are about.
int topicOf(CertificateRow row)
{
    if (row < CertificateRow::SubjectName)
        return int(ShownTopic::General);
    if (row < CertificateRow::ValidFrom)
        return int(ShownTopic::Holder);
    if (row < CertificateRow::PublicKeyId)
        return int(ShownTopic::Validity);
    return row < CertificateRow::PrivateKeyAvailability ? int(ShownTopic::PublicKey) : NoTopic;
}

QString titleOf(CertificateRow first, const QString &title)
{
    const bool isHolder =
        first >= CertificateRow::SubjectName && first <= CertificateRow::IdentificationKind;
    //% "Holder"
    return isHolder && !title.isEmpty() ? qtTrId("trivex-app-holder") : title;
}

/// Two rows of the model have the holder's organization once more, by names that it is none of: the
/// key's and its token's. Nobody has issued a request.
bool isFor(CertificateRow row, const QObject *certificate)
{
    if (row == CertificateRow::PublicKeyMarker || row == CertificateRow::PrivateKeyManufacturer)
        return false;
    return row != CertificateRow::Issuer || !qobject_cast<SavedRequest *>(certificate);
}

/// Adds to `rows` what they do not show yet.
void addMissing(const QVector<ShownRow> &more, QVector<ShownRow> *rows)
{
    const QVector<ShownRow> known = *rows;
    for (const ShownRow &row : more) {
        const bool isKnown = std::any_of(known.cbegin(), known.cend(), [&row](const ShownRow &one) {
            return !row.id.isEmpty() && one.id == row.id && one.value == row.value;
        });
        if (!isKnown)
            *rows += row;
    }
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

bool CertificateDetails::hasEncoding() const
{
    return !m_encoding.isEmpty();
}

QString CertificateDetails::pem() const
{
    return pemText(kind(), m_encoding);
}

QString CertificateDetails::structure() const
{
    return structureText(m_encoding);
}

ShownKind CertificateDetails::kind() const
{
    return qobject_cast<SavedRequest *>(m_certificate) ? ShownKind::Request
                                                       : ShownKind::Certificate;
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
    // The model has names of paddings there.
    if (row == CertificateRow::SignatureAlgorithm && !m_signature.isEmpty() && !text.isEmpty())
        return m_signature;
    return isFixed(row) ? Texts::plainHex(text) : plainText(text);
}

/// Reads the certificate anew where it is another one.
void CertificateDetails::readEncoding()
{
    const auto *object = qobject_cast<EncodedObject *>(m_certificate);
    const QByteArray encoding = object ? object->encoding() : QByteArray();
    if (encoding == m_encoding)
        return;
    m_encoding = encoding;
    m_shown = encoding.isEmpty() ? QVector<ShownGroup>() : describe(kind(), encoding);
    m_signature.clear();
    for (const ShownGroup &group : qAsConst(m_shown)) {
        for (const ShownRow &row : group.rows) {
            if (row.id == ShownId::SignatureAlgorithm)
                m_signature = row.value;
        }
    }
}

/// The model's rows, section by section.
QVector<CertificateDetails::Group> CertificateDetails::modelGroups() const
{
    QVector<Group> groups;
    QString lastSection;
    const int count = m_info ? m_info->rowCount() : 0;
    for (int i = 0; i < count; ++i) {
        const QModelIndex index = m_info->index(i, 0);
        const auto row = CertificateRow(i);
        const QString section = index.data(m_sectionRole).toString();
        if (groups.isEmpty() || section != lastSection) {
            groups += {topicOf(row), titleOf(row, section), {}};
            lastSection = section;
        }
        const QString text = value(index);
        if (isFor(row, m_certificate) && !text.isEmpty())
            groups.last().rows +=
                {idOf(row), index.data(m_labelRole).toString(), text, isFixed(row)};
    }
    return groups;
}

void CertificateDetails::rebuild()
{
    readEncoding();
    QVector<Group> groups = modelGroups();
    for (const ShownGroup &shown : qAsConst(m_shown)) {
        const int topic = int(shown.topic);
        auto known = std::find_if(groups.begin(), groups.end(),
                                  [topic](const Group &group) { return group.topic == topic; });
        if (known == groups.end())
            groups += {topic, shown.title, shown.rows};
        else
            addMissing(shown.rows, &known->rows);
    }
    m_groups.clear();
    for (const Group &group : qAsConst(groups)) {
        QVariantList rows;
        for (const ShownRow &row : group.rows)
            rows += valueRow(row);
        if (!rows.isEmpty())
            m_groups += valueGroup(group.title, rows);
    }
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
            result.append(QLatin1Char('\n')).append(title).append(QLatin1Char('\n'));
        const QVariantList rows = map.value(QStringLiteral("rows")).toList();
        for (const QVariant &row : rows) {
            const QVariantMap fields = row.toMap();
            QString value = fields.value(QStringLiteral("value")).toString();
            value.replace(QLatin1Char('\n'), QStringLiteral("\n    "));
            // Added as a whole: a sum has the text allocated anew, to its exact size, each time.
            const QString line = fields.value(QStringLiteral("label")).toString()
                + QStringLiteral(": ") + value + QLatin1Char('\n');
            result += line;
        }
    }
    return result;
}

} // namespace Trivex
