// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/certificatedetails.h"

#include "qca/base/certificaterows.h"
#include "qca/base/plaintext.h"
#include "qca/base/savedrequest.h"
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

/// The model's texts for signature algorithms by their first and last words, with what people call
/// the two parts.
struct SignatureName {
    const char *first;
    const char *last;
    const char *key;
    const char *digest;
};
constexpr SignatureName SignatureNames[] = {
    {"SHA1", "EMSA1", "DSA", "SHA-1"},
    {"SHA1", "EMSA3", "RSA", "SHA-1"},
    {"MD5", "EMSA3", "RSA", "MD5"},
    {"MD2", "EMSA3", "RSA", "MD2"},
    {"RIPEMD160", "EMSA3", "RSA", "RIPEMD-160"},
    {"SHA224", "EMSA3", "RSA", "SHA-224"},
    {"SHA256", "EMSA3", "RSA", "SHA-256"},
    {"SHA384", "EMSA3", "RSA", "SHA-384"},
    {"SHA512", "EMSA3", "RSA", "SHA-512"},
    {"ECDSA", "SHA256", "ECDSA", "SHA-256"},
    {"ECDSA", "SHA384", "ECDSA", "SHA-384"},
    {"GOST R 34.11-94", "GOST R 34.10-2001", "GOST R 34.10-2001", "GOST R 34.11-94"},
    {"GOST R 34.10-2012", "GOST R 34.11-2012 (256 bit)", "GOST R 34.10-2012",
     "GOST R 34.11-2012 (256 bit)"},
    {"GOST R 34.10-2012", "GOST R 34.11-2012 (512 bit)", "GOST R 34.10-2012",
     "GOST R 34.11-2012 (512 bit)"},
};

/// In the user's language; what the model names in no known way stays.
QString signatureName(const QString &text)
{
    const int comma = text.indexOf(QLatin1Char(','));
    for (const SignatureName &one : SignatureNames) {
        if (comma < 0 || text.left(comma) != QLatin1String(one.first)
            || !text.endsWith(QLatin1Char(' ') + QLatin1String(one.last)))
            continue;
        //% "%1 with %2"
        return qtTrId("trivex-app-signature-with")
            .arg(QLatin1String(one.key), QLatin1String(one.digest))
            //% "GOST R"
            .replace(QStringLiteral("GOST R"), qtTrId("trivex-app-gost"))
            //% "bits"
            .replace(QStringLiteral(" bit)"),
                     QLatin1Char(' ') + qtTrId("trivex-app-bits") + QLatin1Char(')'));
    }
    return text;
}

/// Labels whose words in the model are others than the window's.
QString labelOf(CertificateRow row, const QString &label)
{
    if (row == CertificateRow::PublicKeyMarker) {
        //% "Key name"
        return qtTrId("trivex-app-key-name");
    }
    if (row == CertificateRow::PrivateKeyManufacturer) {
        //% "Kind of token"
        return qtTrId("trivex-app-token-kind");
    }
    return label;
}

QString titleOf(CertificateRow first, const QString &title)
{
    const bool isHolder =
        first >= CertificateRow::SubjectName && first <= CertificateRow::IdentificationKind;
    //% "Holder"
    return isHolder && !title.isEmpty() ? qtTrId("trivex-app-holder") : title;
}

/// Nobody has issued a request, and its model has the holder's organization where that of a
/// certificate has the kind of token.
bool isFor(CertificateRow row, const QObject *certificate)
{
    const bool notOfRequests =
        row == CertificateRow::Issuer || row == CertificateRow::PrivateKeyManufacturer;
    return !notOfRequests || !qobject_cast<SavedRequest *>(certificate);
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
    if (row == CertificateRow::SignatureAlgorithm)
        return plainText(signatureName(text));
    return isFixed(row) ? Texts::plainHex(text) : plainText(text);
}

QVariantMap CertificateDetails::row(const QModelIndex &index) const
{
    const auto row = CertificateRow(index.row());
    const QString text = value(index);
    return {{QStringLiteral("label"), labelOf(row, index.data(m_labelRole).toString())},
            {QStringLiteral("value"), text},
            {QStringLiteral("fixed"), isFixed(row)},
            {QStringLiteral("flag"), flagOf(row, text)}};
}

void CertificateDetails::rebuild()
{
    m_groups.clear();
    const int count = m_info ? m_info->rowCount() : 0;
    QString title;
    QString lastSection;
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
        if (section != lastSection) {
            close();
            lastSection = section;
            title = titleOf(CertificateRow(i), section);
        }
        if (isFor(CertificateRow(i), m_certificate) && !value(index).isEmpty())
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
