// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/collectioncontext.h"

#include "qca/asn1/attributeids.h"
#include "qca/asn1/derwriter.h"
#include "qca/x509/certificatecontext.h"
#include "qca/x509/crlcontext.h"
#include "qca/x509/signeddata.h"

namespace Trivex {

namespace {

template <class Context, class List>
void readMembers(const QList<QByteArray> &members, QCA::Provider *provider, List *list)
{
    for (const QByteArray &member : members) {
        auto context = std::make_unique<Context>(provider);
        if (context->fromDER(member) == QCA::ConvertGood)
            list->append(context.release());
    }
}

} // namespace

CollectionContext::CollectionContext(QCA::Provider *provider)
    : QCA::CertCollectionContext(provider)
{
}

QCA::Provider::Context *CollectionContext::clone() const
{
    return new CollectionContext(provider());
}

QByteArray CollectionContext::toPKCS7(const QList<QCA::CertContext *> &certificates,
                                      const QList<QCA::CRLContext *> &lists) const
{
    QByteArray certificateSet;
    QByteArray listSet;
    for (const QCA::CertContext *certificate : certificates)
        certificateSet += certificate->toDER();
    for (const QCA::CRLContext *list : lists)
        listSet += list->toDER();
    QList<QByteArray> parts = {Der::writeInteger(QCA::BigInteger(1)), Der::write(Der::Set, {}),
                               Der::writeSequence({Der::writeOid(Oid::Data)})};
    if (!certificateSet.isEmpty())
        parts += Der::write(Der::context(0), certificateSet);
    if (!listSet.isEmpty())
        parts += Der::write(Der::context(1), listSet);
    parts += Der::write(Der::Set, {});
    return Der::writeSequence(
        {Der::writeOid(Oid::SignedData), Der::write(Der::context(0), Der::writeSequence(parts))});
}

QCA::ConvertResult CollectionContext::fromPKCS7(const QByteArray &der,
                                                QList<QCA::CertContext *> *certificates,
                                                QList<QCA::CRLContext *> *lists) const
{
    SignedData data;
    if (!SignedData::read(der, &data))
        return QCA::ErrorDecode;
    readMembers<CertificateContext>(data.certificates, provider(), certificates);
    readMembers<CrlContext>(data.lists, provider(), lists);
    return QCA::ConvertGood;
}

} // namespace Trivex
