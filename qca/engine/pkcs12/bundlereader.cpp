// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/pkcs12/bundlereader.h"

#include "qca/adapter/bounds.h"
#include "qca/engine/keys/gostengine.h"
#include "qca/engine/keys/gostpublickey.h"
#include "qca/engine/pkcs12/bundlepassword.h"
#include "qca/engine/pkcs12/derivationbudget.h"
#include "qca/engine/pkcs12/legacylibrary.h"
#include "qca/engine/x509/issuersearch.h"

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

// What was found in a bundle, and whether something in it could not be opened.
struct Contents {
    QList<KeyItem> keys; // the first that can be used
    QList<CertificateItem> certificates;
    bool isLocked = false;
    bool isTooMuch = false; // opening it takes more work than anybody should do
    DerivationBudget budget;
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

Secret encode(const PKCS8_PRIV_KEY_INFO *info)
{
    unsigned char *data = nullptr;
    const int size = i2d_PKCS8_PRIV_KEY_INFO(info, &data);
    Secret encoded(size);
    if (size > 0) {
        std::copy(data, data + size, encoded.data());
        OPENSSL_clear_free(data, size_t(size));
    }
    return encoded;
}

void takeKey(PKCS12_SAFEBAG *bag, const PKCS8_PRIV_KEY_INFO *info, Contents *contents)
{
    if (!contents->keys.isEmpty())
        return;
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

const X509_ALGOR *algorithmOf(const PKCS12_SAFEBAG *shroudedKey)
{
    const X509_SIG *sig = PKCS12_SAFEBAG_get0_pkcs8(shroudedKey);
    const X509_ALGOR *algorithm = nullptr;
    if (sig)
        X509_SIG_get0(sig, &algorithm, nullptr);
    return algorithm;
}

// Keys behind the first are never used, and each may ask for as much work as that.
void takeShroudedKey(PKCS12_SAFEBAG *bag, const BundlePassword &password, Contents *contents)
{
    if (!contents->keys.isEmpty() || contents->isTooMuch)
        return;
    contents->isTooMuch = !contents->budget.take(algorithmOf(bag));
    if (contents->isTooMuch)
        return;
    const Pkcs8Handle info(
        PKCS12_decrypt_skey_ex(bag, password.data(), password.size(), legacyLibrary(), nullptr));
    takeKey(bag, info.get(), contents);
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
        case NID_pkcs8ShroudedKeyBag:
            takeShroudedKey(bag, password, contents);
            break;
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

// Of a safe that is encrypted with a password; null for others.
const X509_ALGOR *algorithmOf(const PKCS7 *safe)
{
    const bool isEncrypted =
        PKCS7_type_is_encrypted(safe) && safe->d.encrypted && safe->d.encrypted->enc_data;
    return isEncrypted ? safe->d.encrypted->enc_data->algorithm : nullptr;
}

void takeSafe(PKCS7 *safe, const BundlePassword &password, Contents *contents)
{
    const bool isEncrypted = PKCS7_type_is_encrypted(safe);
    contents->isTooMuch = contents->isTooMuch || !contents->budget.take(algorithmOf(safe));
    if (contents->isTooMuch)
        return;
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
std::optional<BundlePassword> fittingPassword(PKCS12 *bundle, const Secret &password)
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

const ASN1_INTEGER *macIterations(const PKCS12 *bundle)
{
    const ASN1_INTEGER *iterations = nullptr;
    PKCS12_get0_mac(nullptr, nullptr, nullptr, &iterations, bundle);
    return iterations;
}

// Whether what shows before any of it is opened is within the bounds.
bool isAffordable(const PKCS12 *bundle, const STACK_OF(PKCS7) * safes)
{
    DerivationBudget budget;
    bool isGood = budget.take(macIterations(bundle));
    for (int i = 0; isGood && i < sk_PKCS7_num(safes); ++i) {
        PKCS7 *safe = sk_PKCS7_value(safes, i);
        isGood = budget.take(algorithmOf(safe));
        const Bags bags(PKCS7_type_is_data(safe) ? PKCS12_unpack_p7data(safe) : nullptr);
        for (int j = 0; isGood && j < sk_PKCS12_SAFEBAG_num(bags.get()); ++j) {
            const PKCS12_SAFEBAG *bag = sk_PKCS12_SAFEBAG_value(bags.get(), j);
            isGood = PKCS12_SAFEBAG_get_nid(bag) != NID_pkcs8ShroudedKeyBag
                || DerivationBudget::allows(algorithmOf(bag));
        }
    }
    return isGood;
}

Contents readContents(const STACK_OF(PKCS7) * safes, const BundlePassword &password)
{
    Contents contents;
    for (int i = 0; i < sk_PKCS7_num(safes); ++i)
        takeSafe(sk_PKCS7_value(safes, i), password, &contents);
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

// Puts the issuers of the only certificate of `chain` behind it, out of `others`.
bool complete(QList<QByteArray> *chain, const QList<CertificateItem> &others)
{
    const auto own = CertificateData::fromDer(chain->first());
    QList<CertificateDataPtr> candidates;
    for (const CertificateItem &other : others)
        candidates += CertificateData::fromDer(other.der);
    const auto found = own ? completeChain(own, candidates) : std::nullopt;
    for (int i = 1; found && i < found->size(); ++i)
        chain->append(found->at(i)->der());
    return found.has_value();
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
    return complete(&bundle->chain, others) ? QCA::ConvertGood : QCA::ErrorDecode;
}

QCA::ConvertResult readParsed(PKCS12 *parsed, const Secret &password, Bundle *bundle)
{
    if (macDigest(parsed).startsWith("1.2.643."))
        loadGostEngine();
    const Safes safes(PKCS12_unpack_authsafes(parsed));
    if (!isAffordable(parsed, safes.get()))
        return QCA::ErrorDecode;
    const auto fitting = fittingPassword(parsed, password);
    if (!fitting)
        return QCA::ErrorPassphrase;
    Contents contents = readContents(safes.get(), *fitting);
    if (contents.isTooMuch)
        return QCA::ErrorDecode;
    const bool isChecked = PKCS12_mac_present(parsed) == 1;
    // The password is right then: what stays locked is locked by a cipher that nobody here has.
    contents.isLocked = contents.isLocked && !isChecked;
    return assemble(contents, bundle);
}

} // namespace

QCA::ConvertResult readBundle(const QByteArray &der, const Secret &password, Bundle *bundle)
{
    const Pkcs12Handle parsed = der.size() <= maxFileBytes ? parse(der) : nullptr;
    const QCA::ConvertResult result =
        parsed ? readParsed(parsed.get(), password, bundle) : QCA::ErrorDecode;
    ERR_clear_error();
    return result;
}

} // namespace Trivex
