// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/signerlist.h"

#include "qca/base/plaintext.h"
#include "qca/x509/names.h"
#include "tools/fileitemtexts.h"
#include "tools/signertexts.h"

#include <algorithm>

namespace Trivex {

namespace {

/// Who a signature says to be from, where the certificate is not there: only its issuer is known.
QString issuerName(const SignerReport &report)
{
    const QCA::CertificateInfoOrdered name = decodeName(Der::sliceOf(report.issuer));
    for (const QCA::CertificateInfoTypeKnown type : {QCA::CommonName, QCA::Organization}) {
        for (const QCA::CertificateInfoPair &pair : name) {
            if (pair.type().known() == type)
                return plainText(pair.value());
        }
    }
    return {};
}

} // namespace

SignerList::SignerList(QObject *parent)
    : QAbstractListModel(parent)
{
}

int SignerList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant SignerList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows.at(index.row());
    const SignerReport &report = row.signature.report;
    const bool isThere = !row.certificate.certificate().isNull();
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return isThere ? itemName(row.certificate) : QString();
    case IssuerRole:
        return isThere ? itemDetail(row.certificate) : issuerName(report);
    case LevelRole:
        return signerText(report, row.signature.trust).level;
    case HeadlineRole:
        return signerText(report, row.signature.trust).headline;
    case AdviceRole:
        return signerText(report, row.signature.trust).advice;
    case TimeRole:
        return report.time;
    case VerdictRole:
        return int(report.verdict);
    case TrustRole:
        return int(row.signature.trust);
    case HasCertificateRole:
        return isThere;
    default:
        return {};
    }
}

QHash<int, QByteArray> SignerList::roleNames() const
{
    return {
        {NameRole, "name"},         {IssuerRole, "issuer"}, {LevelRole, "level"},
        {HeadlineRole, "headline"}, {AdviceRole, "advice"}, {TimeRole, "time"},
        {VerdictRole, "verdict"},   {TrustRole, "trust"},   {HasCertificateRole, "hasCertificate"}};
}

int SignerList::level() const
{
    int worst = 0;
    for (const Row &row : m_rows)
        worst = std::max(worst, signerText(row.signature.report, row.signature.trust).level);
    return worst;
}

QVariant SignerList::value(int row, int role) const
{
    return hasIndex(row, 0) ? data(index(row, 0), role) : QVariant();
}

QVariantList SignerList::details(int row) const
{
    const bool isThere =
        row >= 0 && row < m_rows.size() && !m_rows.at(row).certificate.certificate().isNull();
    return isThere ? itemGroups(m_rows.at(row).certificate) : QVariantList();
}

void SignerList::setSignatures(const QVector<Signature> &signatures)
{
    beginResetModel();
    m_rows.clear();
    for (const Signature &signature : signatures) {
        FileItem item;
        item.der = signature.report.certificate;
        m_rows += {signature, item};
    }
    endResetModel();
    Q_EMIT changed();
}

} // namespace Trivex
