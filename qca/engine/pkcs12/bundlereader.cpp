// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/pkcs12/bundlereader.h"

#include "qca/engine/keys/gostengine.h"
#include "qca/engine/keys/gostpublickey.h"
#include "qca/engine/pkcs12/bundlepassword.h"
#include "qca/engine/pkcs12/legacylibrary.h"
#include "qca/engine/x509/certificatecontext.h"

#include <openssl/err.h>

#include <optional>

namespace Trivex {

namespace {

// Bags may hold bags.
constexpr int DeepestNesting = 8;

struct FreeSafes {
    void operator()(STACK_OF(PKCS7) * stack) const noexcept
    {
        sk_PKCS7_pop_free(stack, PKCS7_free);
    }
};
using Safes = std::unique_ptr<STACK_OF(PKCS7), FreeSafes>;

struct FreeBags {
    void operator()(STACK_OF(PKCS12_SAFEBAG) * stack) const noexcept
    {
        sk_PKCS12_SAFEBAG_pop_free(stack, PKCS12_SAFEBAG_free);
    }
};
using Bags = std::unique_ptr<STACK_OF(PKCS12_SAFEBAG), FreeBags>;

struct KeyItem {
    KeyMaterial key;
    QString name;
    QByteArray localId;
};

struct CertificateItem {
    QByteArray der;
    QString name;
    QByteArray localId;
};

// All that was found in a bundle, and whether something in it could not be opened.
struct Contents {
    QList<KeyItem> keys;
    QList<CertificateItem> certificates;
    bool isLocked = false;
};

Pkcs12Handle parse(const QByteArray &der)
{
    // With the library context that later decrypts it.
    PKCS12 *bundle = PKCS12_init_ex(NID_pkcs7_data, legacyLibrary(), nullptr);
    const BioHandle bio(BIO_new_mem_buf(der.constData(), der.size()));
    const bool isRead = bundle && bio && d2i_PKCS12_bio(bio.get(), &bundle);
    // A failing call has freed the object and cleared the pointer, or left it as it was.
    Pkcs12Handle parsed(bundle);
    return isRead ? std::move(parsed) : nullptr;
}

QString nameOf(PKCS12_SAFEBAG *bag)
{
    char *name = PKCS12_get_friendlyname(bag);
    const QString text = QString::fromUtf8(name);
    OPENSSL_free(name);
    return text;
}

QByteArray localIdOf(const PKCS12_SAFEBAG *bag)
{
    const ASN1_TYPE *value = PKCS12_SAFEBAG_get0_attr(bag, NID_localKeyID);
    if (!value || value->type != V_ASN1_OCTET_STRING)
        return {};
    const ASN1_OCTET_STRING *octets = value->value.octet_string;
    return QByteArray(reinterpret_cast<const char *>(ASN1_STRING_get0_data(octets)),
                      ASN1_STRING_length(octets));
}

QCA::SecureArray encode(const PKCS8_PRIV_KEY_INFO *info)
{
    unsigned char *data = nullptr;
    const int size = i2d_PKCS8_PRIV_KEY_INFO(info, &data);
    QCA::SecureArray encoded(qMax(size, 0));
    if (size > 0) {
        std::copy(data, data + size, encoded.data());
        OPENSSL_clear_free(data, size_t(size));
    }
    return encoded;
}

void takeKey(PKCS12_SAFEBAG *bag, const PKCS8_PRIV_KEY_INFO *info, Contents *contents)
{
    if (!info) {
        contents->isLocked = true;
        return;
    }
    KeyMaterial key = KeyMaterial::fromPrivateInfo(encode(info));
    if (!key.isNull())
        contents->keys += {std::move(key), nameOf(bag), localIdOf(bag)};
}

void takeCertificate(PKCS12_SAFEBAG *bag, Contents *contents)
{
    if (PKCS12_SAFEBAG_get_bag_nid(bag) != NID_x509Certificate)
        return;
    const X509Handle certificate(PKCS12_SAFEBAG_get1_cert(bag));
    unsigned char *data = nullptr;
    const int size = certificate ? i2d_X509(certificate.get(), &data) : 0;
    if (size > 0)
        contents->certificates +=
            {QByteArray(reinterpret_cast<const char *>(data), size), nameOf(bag), localIdOf(bag)};
    OPENSSL_free(data);
}

void takeBags(const STACK_OF(PKCS12_SAFEBAG) * bags, const BundlePassword &password, int depth,
              Contents *contents)
{
    for (int i = 0; depth < DeepestNesting && i < sk_PKCS12_SAFEBAG_num(bags); ++i) {
        PKCS12_SAFEBAG *bag = sk_PKCS12_SAFEBAG_value(bags, i);
        switch (PKCS12_SAFEBAG_get_nid(bag)) {
        case NID_keyBag:
            takeKey(bag, PKCS12_SAFEBAG_get0_p8inf(bag), contents);
            break;
        case NID_pkcs8ShroudedKeyBag: {
            const Pkcs8Handle info(PKCS12_decrypt_skey_ex(bag, password.data(), password.size(),
                                                          legacyLibrary(), nullptr));
            takeKey(bag, info.get(), contents);
            break;
        }
        case NID_certBag:
            takeCertificate(bag, contents);
            break;
        case NID_safeContentsBag:
            takeBags(PKCS12_SAFEBAG_get0_safes(bag), password, depth + 1, contents);
            break;
        default:
            break;
        }
    }
}

void takeSafe(PKCS7 *safe, const BundlePassword &password, Contents *contents)
{
    const bool isEncrypted = PKCS7_type_is_encrypted(safe);
    Bags bags;
    if (isEncrypted)
        bags.reset(PKCS12_unpack_p7encdata(safe, password.data(), password.size()));
    else if (PKCS7_type_is_data(safe))
        bags.reset(PKCS12_unpack_p7data(safe));
    if (bags)
        takeBags(bags.get(), password, 0, contents);
    else
        contents->isLocked = contents->isLocked || isEncrypted;
}

// The digest of the integrity check, empty when there is no check.
QByteArray macDigest(const PKCS12 *bundle)
{
    const X509_ALGOR *algorithm = nullptr;
    PKCS12_get0_mac(nullptr, &algorithm, nullptr, nullptr, bundle);
    const ASN1_OBJECT *object = nullptr;
    if (algorithm)
        X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    char text[80] = "";
    if (object)
        OBJ_obj2txt(text, sizeof text, object, 1);
    return QByteArray(text);
}

// The form of the password that fits; without a check the first, which has to prove itself.
std::optional<BundlePassword> fittingPassword(PKCS12 *bundle, const QCA::SecureArray &password)
{
    const QList<BundlePassword> forms = passwordForms(password);
    if (PKCS12_mac_present(bundle) != 1)
        return forms.first();
    for (const BundlePassword &form : forms) {
        if (PKCS12_verify_mac(bundle, form.data(), form.size()) == 1)
            return form;
    }
    return std::nullopt;
}

Contents readContents(PKCS12 *bundle, const BundlePassword &password)
{
    Contents contents;
    const Safes safes(PKCS12_unpack_authsafes(bundle));
    for (int i = 0; safes && i < sk_PKCS7_num(safes.get()); ++i)
        takeSafe(sk_PKCS7_value(safes.get(), i), password, &contents);
    return contents;
}

bool belongs(const CertificateItem &certificate, const KeyItem &key)
{
    const auto data = CertificateData::fromDer(certificate.der);
    if (!data)
        return false;
    if (!key.key.publicInfo().isEmpty())
        return comparablePublicInfo(data->publicInfo())
            == comparablePublicInfo(key.key.publicInfo());
    return !key.localId.isEmpty() && certificate.localId == key.localId;
}

int findOwn(const Contents &contents, const KeyItem &key)
{
    const auto &certificates = contents.certificates;
    for (int i = 0; i < certificates.size(); ++i) {
        if (belongs(certificates.at(i), key))
            return i;
    }
    // A key whose encoding differs from its certificate's (curve by name or by numbers).
    for (int i = 0; i < certificates.size(); ++i) {
        if (!key.localId.isEmpty() && certificates.at(i).localId == key.localId)
            return i;
    }
    return -1;
}

// The issuers of the last certificate of `chain`, one after the other, out of `others`.
void complete(QList<QByteArray> *chain, QList<CertificateItem> others)
{
    for (int i = 0; i < others.size();) {
        CertificateContext last(nullptr);
        CertificateContext candidate(nullptr);
        if (last.fromDER(chain->last()) == QCA::ConvertGood
            && candidate.fromDER(others.at(i).der) == QCA::ConvertGood && !last.compare(&candidate)
            && candidate.isIssuerOf(&last)) {
            chain->append(others.takeAt(i).der);
            i = 0;
        } else {
            ++i;
        }
    }
}

QCA::ConvertResult assemble(const Contents &contents, Bundle *bundle)
{
    if (contents.keys.isEmpty())
        return contents.isLocked ? QCA::ErrorPassphrase : QCA::ErrorDecode;
    const KeyItem &key = contents.keys.first();
    QList<CertificateItem> others = contents.certificates;
    const int own = findOwn(contents, key);
    bundle->key = key.key;
    bundle->name = key.name;
    bundle->chain.clear();
    if (own < 0)
        return QCA::ErrorDecode;
    const CertificateItem item = others.takeAt(own);
    // A key without the certificate that says whose it is could be shown by nobody.
    if (!CertificateData::fromDer(item.der))
        return QCA::ErrorDecode;
    if (bundle->name.isEmpty())
        bundle->name = item.name;
    bundle->chain += item.der;
    if (const auto data = CertificateData::fromDer(item.der))
        bundle->key.setPublicInfo(data->publicInfo());
    complete(&bundle->chain, others);
    return QCA::ConvertGood;
}

QCA::ConvertResult readParsed(PKCS12 *parsed, const QCA::SecureArray &password, Bundle *bundle)
{
    if (macDigest(parsed).startsWith("1.2.643."))
        loadGostEngine();
    const auto fitting = fittingPassword(parsed, password);
    if (!fitting)
        return QCA::ErrorPassphrase;
    Contents contents = readContents(parsed, *fitting);
    const bool isChecked = PKCS12_mac_present(parsed) == 1;
    // The password is right then: what stays locked is locked by a cipher that nobody here has.
    contents.isLocked = contents.isLocked && !isChecked;
    return assemble(contents, bundle);
}

} // namespace

QCA::ConvertResult readBundle(const QByteArray &der, const QCA::SecureArray &password,
                              Bundle *bundle)
{
    const Pkcs12Handle parsed = parse(der);
    const QCA::ConvertResult result =
        parsed ? readParsed(parsed.get(), password, bundle) : QCA::ErrorDecode;
    ERR_clear_error();
    return result;
}

} // namespace Trivex
