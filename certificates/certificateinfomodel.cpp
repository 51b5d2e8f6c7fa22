// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/certificateinfomodel.h"

#include "qca/base/certificaterows.h"

#include <array>

namespace {

using Trivex::CertificateRow;
using Getter = QString (*)(const Certificate &);

struct Field {
    CertificateRow row;
    const char *labelId;
    Getter value;
    const char *sectionId; ///< null for the rows above the first section
};

template <QString (Certificate::*getter)() const> QString text(const Certificate &certificate)
{
    return (certificate.*getter)();
}

template <QDateTime (Certificate::*getter)() const> QString dateText(const Certificate &certificate)
{
    return (certificate.*getter)().toString(QStringLiteral("hh:mm, dd.MM.yyyy"));
}

constexpr const char *SubjectGroup = QT_TRID_NOOP("trivex-p-la-subject");
constexpr const char *ValidityGroup = QT_TRID_NOOP("trivex-p-la-validity");
constexpr const char *PublicKeyGroup = QT_TRID_NOOP("trivex-p-la-public_key");
constexpr const char *PrivateKeyGroup = QT_TRID_NOOP("trivex-p-la-private_key");

constexpr std::array<Field, 25> Fields = {{
    {CertificateRow::Issuer, QT_TRID_NOOP("trivex-p-la-issuer"), text<&Certificate::issuer>,
     nullptr},
    {CertificateRow::SerialNumber, QT_TRID_NOOP("trivex-p-la-serial_number"),
     text<&Certificate::serialNumber>, nullptr},
    {CertificateRow::SignatureAlgorithm, QT_TRID_NOOP("trivex-p-la-sign_alg"),
     text<&Certificate::signatureAlgorithm>, nullptr},
    {CertificateRow::SubjectName, QT_TRID_NOOP("trivex-p-la-subject_name"),
     text<&Certificate::subjectName>, SubjectGroup},
    {CertificateRow::Organization, QT_TRID_NOOP("trivex-p-la-subject_organization"),
     text<&Certificate::subjectOrganization>, SubjectGroup},
    {CertificateRow::Email, QT_TRID_NOOP("trivex-p-la-subject_email"),
     text<&Certificate::subjectEmail>, SubjectGroup},
    {CertificateRow::OrganizationalUnit, QT_TRID_NOOP("trivex-p-la-subject_organization_unit"),
     text<&Certificate::subjectOrganizationalUnit>, SubjectGroup},
    {CertificateRow::CountryCode, QT_TRID_NOOP("trivex-p-la-subject_country_code"),
     text<&Certificate::subjectCountryCode>, SubjectGroup},
    {CertificateRow::State, QT_TRID_NOOP("trivex-p-la-subject_state"),
     text<&Certificate::subjectCountry>, SubjectGroup},
    {CertificateRow::Locality, QT_TRID_NOOP("trivex-p-la-subject_locality"),
     text<&Certificate::subjectLocality>, SubjectGroup},
    {CertificateRow::Address, QT_TRID_NOOP("trivex-p-la-subject_address"),
     text<&Certificate::subjecAddress>, SubjectGroup},
    {CertificateRow::Inn, QT_TRID_NOOP("trivex-p-la-subject_inn"), text<&Certificate::subjectInn>,
     SubjectGroup},
    {CertificateRow::Snils, QT_TRID_NOOP("trivex-p-la-subject_snils"),
     text<&Certificate::subjectSnils>, SubjectGroup},
    {CertificateRow::Ogrn, QT_TRID_NOOP("trivex-p-la-subject_ogrn"),
     text<&Certificate::subjectOgrn>, SubjectGroup},
    {CertificateRow::Innle, QT_TRID_NOOP("trivex-p-la-subject_innle"),
     text<&Certificate::subjectInnle>, SubjectGroup},
    {CertificateRow::Ogrnip, QT_TRID_NOOP("trivex-p-la-subject_ogrnip"),
     text<&Certificate::subjectOgrnip>, SubjectGroup},
    {CertificateRow::IdentificationKind, QT_TRID_NOOP("trivex-p-la-subject_identification_kind"),
     text<&Certificate::subjectIdentificationKind>, SubjectGroup},
    {CertificateRow::ValidFrom, QT_TRID_NOOP("trivex-p-la-validity_from"),
     dateText<&Certificate::notValidBefore>, ValidityGroup},
    {CertificateRow::ValidUntil, QT_TRID_NOOP("trivex-p-la-validity_to"),
     dateText<&Certificate::notValidAfter>, ValidityGroup},
    {CertificateRow::PublicKeyId, QT_TRID_NOOP("trivex-p-la-public_key_id"),
     text<&Certificate::publicKeyId>, PublicKeyGroup},
    {CertificateRow::PublicKeyAlgorithm, QT_TRID_NOOP("trivex-p-la-public_key_algorithm"),
     text<&Certificate::publicKeyTypeAlgorithm>, PublicKeyGroup},
    // The capital letter is part of the identifier.
    {CertificateRow::PublicKeyMarker, QT_TRID_NOOP("trivex-p-la-public_key_Marker"),
     text<&Certificate::publicKeyMarker>, PublicKeyGroup},
    {CertificateRow::PrivateKeyAvailability, QT_TRID_NOOP("trivex-p-la-private_key_id"),
     text<&Certificate::privateKeyAvailability>, PrivateKeyGroup},
    {CertificateRow::PrivateKeyLocation, QT_TRID_NOOP("trivex-p-la-private_key_location"),
     text<&Certificate::privateKeyLocation>, PrivateKeyGroup},
    {CertificateRow::PrivateKeyManufacturer, QT_TRID_NOOP("trivex-p-la-private_key_manufacturer"),
     text<&Certificate::privateKeyManufacturer>, PrivateKeyGroup},
}};

constexpr bool standInOrder()
{
    size_t position = 0;
    for (const Field &field : Fields) {
        if (size_t(field.row) != position++)
            return false;
    }
    return true;
}
static_assert(standInOrder());

} // namespace

CertificateInfoModel::CertificateInfoModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

CertificateInfoModel::~CertificateInfoModel() = default;

void CertificateInfoModel::setCertificate(Certificate *certificate)
{
    if (!certificate || certificate == m_certificate)
        return;
    m_certificate = certificate;
    rebuild();
    Q_EMIT certificateChanged();
}

void CertificateInfoModel::rebuild()
{
    // Without a notification: views go by the insertions that follow.
    m_rows.clear();
    for (const Field &field : Fields) {
        const int row = m_rows.size();
        beginInsertRows(QModelIndex(), row, row);
        m_rows.append({field.sectionId ? qtTrId(field.sectionId) : QString(), qtTrId(field.labelId),
                       field.value(*m_certificate)});
        endInsertRows();
    }
    Q_EMIT infoChanged();
}

int CertificateInfoModel::rowCount(const QModelIndex &parent) const
{
    Q_UNUSED(parent)
    return m_rows.size();
}

QVariant CertificateInfoModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return QVariant();
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case LabelRole:
        return row.label;
    case ValueRole:
        return row.value;
    case SectionRole:
        return row.section;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> CertificateInfoModel::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {LabelRole, QByteArrayLiteral("label")},
        {ValueRole, QByteArrayLiteral("value")},
        {SectionRole, QByteArrayLiteral("section")},
    };
    return names;
}
