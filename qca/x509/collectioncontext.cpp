// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/collectioncontext.h"

#include "qca/asn1/derwriter.h"
#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/x509/certificatecontext.h"
#include "qca/x509/crlcontext.h"

namespace Trivex {

namespace {

constexpr char SignedData[] = "1.2.840.113549.1.7.2";
constexpr char Data[] = "1.2.840.113549.1.7.1";

template <class Context, class List>
void readMembers(Der::Slice members, QCA::Provider *provider, List *list)
{
    Der::Reader reader(members);
    Der::Element member;
    while (reader.next(&member)) {
        auto context = std::make_unique<Context>(provider);
        if (context->fromDER(member.whole.view()) == QCA::ConvertGood)
            list->append(context.release());
    }
}

// The content of SignedData (RFC 2315, 9.1), or of a structure that has only its type and a
// version.
bool openSignedData(const QByteArray &der, Der::Slice *content)
{
    Der::Slice info;
    Der::Slice oid;
    Der::Slice wrapped;
    if (!Der::Reader(Der::sliceOf(der)).next(Der::Sequence, &info))
        return false;
    Der::Reader reader(info);
    return reader.next(Der::ObjectIdentifier, &oid) && Der::oidText(oid) == SignedData
        && reader.next(Der::context(0), &wrapped) && Der::single(wrapped, Der::Sequence, content);
}

// Other programs also write lists with indefinite lengths.
QByteArray definiteForm(const QByteArray &ber)
{
    const auto parsed = decodeNative<Pkcs7Handle>(Der::sliceOf(ber), d2i_PKCS7);
    return encodeNative(parsed.get(), i2d_PKCS7);
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
                               Der::writeSequence({Der::writeOid(Data)})};
    if (!certificateSet.isEmpty())
        parts += Der::write(Der::context(0), certificateSet);
    if (!listSet.isEmpty())
        parts += Der::write(Der::context(1), listSet);
    parts += Der::write(Der::Set, {});
    return Der::writeSequence(
        {Der::writeOid(SignedData), Der::write(Der::context(0), Der::writeSequence(parts))});
}

QCA::ConvertResult CollectionContext::fromPKCS7(const QByteArray &der,
                                                QList<QCA::CertContext *> *certificates,
                                                QList<QCA::CRLContext *> *lists) const
{
    Der::Slice content;
    Der::Slice members;
    QByteArray converted;
    if (der.size() > MaxFileBytes)
        return QCA::ErrorDecode;
    if (!openSignedData(der, &content)) {
        converted = definiteForm(der);
        if (!openSignedData(converted, &content))
            return QCA::ErrorDecode;
    }
    Der::Reader reader(content);
    reader.skip(Der::Integer);
    reader.skip(Der::Set);
    reader.skip(Der::Sequence);
    if (reader.next(Der::context(0), &members))
        readMembers<CertificateContext>(members, provider(), certificates);
    if (reader.next(Der::context(1), &members))
        readMembers<CrlContext>(members, provider(), lists);
    return QCA::ConvertGood;
}

} // namespace Trivex
