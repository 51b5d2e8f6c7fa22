// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/pkcs12/bundlereader.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/nativecoding.h"
#include "qca/asn1/strings.h"
#include "qca/base/bounds.h"
#include "qca/keys/algorithmerrors.h"
#include "qca/keys/derivationbudget.h"
#include "qca/keys/gostengine.h"
#include "qca/keys/legacylibrary.h"
#include "qca/pkcs12/bundlecontents.h"
#include "qca/pkcs12/bundlemac.h"
#include "qca/pkcs12/bundlepassword.h"
#include "qca/x509/issuersearch.h"

#include <openssl/err.h>

#include <optional>
#include <vector>

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

// The contents of a bundle, and whether some of it could not be opened.
struct Contents {
    std::vector<Bags> bags;
    std::vector<PKCS12_SAFEBAG *> keys; // in `bags`
    QList<BundleCertificate> certificates;
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

// Not by PKCS12_get_friendlyname, which loses names whose last character has three octets in UTF-8,
// such as those in Chinese.
QString nameOf(const PKCS12_SAFEBAG *bag)
{
    const ASN1_TYPE *value = PKCS12_SAFEBAG_get0_attr(bag, NID_friendlyName);
    if (!value || value->type != V_ASN1_BMPSTRING)
        return {};
    const ASN1_BMPSTRING *units = value->value.bmpstring;
    const QByteArray octets = QByteArray::fromRawData(
        reinterpret_cast<const char *>(ASN1_STRING_get0_data(units)), ASN1_STRING_length(units));
    Der::Element element;
    element.tag = Der::BmpString;
    element.content = Der::sliceOf(octets);
    return octets.size() % 2 == 0 ? decodeString(element).section(QChar::Null, 0, 0) : QString();
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

void collectCertificate(PKCS12_SAFEBAG *bag, Contents *contents)
{
    if (PKCS12_SAFEBAG_get_bag_nid(bag) != NID_x509Certificate)
        return;
    const X509Handle certificate(PKCS12_SAFEBAG_get1_cert(bag));
    const QByteArray der = encodeNative(certificate.get(), i2d_X509);
    if (!der.isEmpty())
        contents->certificates += {der, nameOf(bag), localIdOf(bag)};
}

const X509_ALGOR *algorithmOf(const PKCS12_SAFEBAG *shroudedKey)
{
    const X509_SIG *sig = PKCS12_SAFEBAG_get0_pkcs8(shroudedKey);
    const X509_ALGOR *algorithm = nullptr;
    if (sig)
        X509_SIG_get0(sig, &algorithm, nullptr);
    return algorithm;
}

Pkcs8Handle openShrouded(PKCS12_SAFEBAG *bag, const BundlePassword &password, Contents *contents)
{
    contents->isTooMuch = !contents->budget.spend(algorithmOf(bag));
    if (contents->isTooMuch)
        return nullptr;
    ERR_clear_error();
    Pkcs8Handle info(
        PKCS12_decrypt_skey_ex(bag, password.data(), password.size(), legacyLibrary(), nullptr));
    contents->isLocked = contents->isLocked || (!info && !isAlgorithmAtFault());
    return info;
}

// Null for a key that is locked or unusable.
KeyMaterial openKey(PKCS12_SAFEBAG *bag, const BundlePassword &password, Contents *contents)
{
    Pkcs8Handle opened;
    const PKCS8_PRIV_KEY_INFO *info = nullptr;
    if (PKCS12_SAFEBAG_get_nid(bag) == NID_keyBag)
        info = PKCS12_SAFEBAG_get0_p8inf(bag);
    else
        info = (opened = openShrouded(bag, password, contents)).get();
    return info ? KeyMaterial::fromPrivateInfo(encodeNativeSecret(info, i2d_PKCS8_PRIV_KEY_INFO))
                : KeyMaterial();
}

void collectBags(const STACK_OF(PKCS12_SAFEBAG) * bags, int depth, Contents *contents)
{
    for (int i = 0; depth < DeepestNesting && i < sk_PKCS12_SAFEBAG_num(bags); ++i) {
        PKCS12_SAFEBAG *bag = sk_PKCS12_SAFEBAG_value(bags, i);
        switch (PKCS12_SAFEBAG_get_nid(bag)) {
        case NID_keyBag:
        case NID_pkcs8ShroudedKeyBag:
            contents->keys.push_back(bag);
            break;
        case NID_certBag:
            collectCertificate(bag, contents);
            break;
        case NID_safeContentsBag:
            collectBags(PKCS12_SAFEBAG_get0_safes(bag), depth + 1, contents);
            break;
        default:
            break;
        }
    }
}

// The algorithm of a safe that is encrypted with a password; null for others.
const X509_ALGOR *algorithmOf(const PKCS7 *safe)
{
    const bool isEncrypted =
        PKCS7_type_is_encrypted(safe) && safe->d.encrypted && safe->d.encrypted->enc_data;
    return isEncrypted ? safe->d.encrypted->enc_data->algorithm : nullptr;
}

void collectSafe(PKCS7 *safe, const BundlePassword &password, Contents *contents)
{
    const bool isEncrypted = PKCS7_type_is_encrypted(safe);
    contents->isTooMuch = contents->isTooMuch || !contents->budget.spend(algorithmOf(safe));
    if (contents->isTooMuch)
        return;
    Bags bags;
    ERR_clear_error();
    if (isEncrypted)
        bags.reset(PKCS12_unpack_p7encdata(safe, password.data(), password.size()));
    else if (PKCS7_type_is_data(safe))
        bags.reset(PKCS12_unpack_p7data(safe));
    if (!bags) {
        contents->isLocked = contents->isLocked || (isEncrypted && !isAlgorithmAtFault());
        return;
    }
    collectBags(bags.get(), 0, contents);
    contents->bags.push_back(std::move(bags));
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

// Whether the parts that can be read without the password are within the bounds.
bool isAffordable(const BundleMac &mac, const STACK_OF(PKCS7) * safes)
{
    DerivationBudget budget;
    bool isGood = mac.takeWork(&budget);
    for (int i = 0; isGood && i < sk_PKCS7_num(safes); ++i) {
        PKCS7 *safe = sk_PKCS7_value(safes, i);
        isGood = budget.spend(algorithmOf(safe));
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
        collectSafe(sk_PKCS7_value(safes, i), password, &contents);
    return contents;
}

// The first key that has a certificate; `*own` is the certificate's index. Other keys may come
// before it, such as those that only decrypt old mail. With no certificate `*own` is -1, and the
// key is null if none can be used.
BundleKey findKey(Contents *contents, const BundlePassword &password, int *own)
{
    OwnCertificates certificates(contents->certificates);
    BundleKey first;
    *own = -1;
    contents->isTooMuch = contents->isTooMuch || contents->keys.size() > MaxBundleKeys;
    for (PKCS12_SAFEBAG *bag : contents->keys) {
        if (contents->isTooMuch)
            return {};
        BundleKey key{openKey(bag, password, contents), nameOf(bag), localIdOf(bag)};
        if (key.key.isNull())
            continue;
        *own = certificates.find(key);
        if (*own >= 0)
            return key;
        first = std::move(key);
    }
    return first;
}

// Appends the issuers of the only certificate of `chain`, out of `others`.
bool complete(QList<QByteArray> *chain, const QList<BundleCertificate> &others)
{
    const auto own = CertificateData::fromDer(chain->first());
    QList<CertificateDataPtr> candidates;
    for (const BundleCertificate &other : others)
        candidates += CertificateData::fromDer(other.der);
    const auto found = own ? completeChain(own, candidates) : std::nullopt;
    for (int i = 1; found && i < found->size(); ++i)
        chain->append(found->at(i)->der());
    return found.has_value();
}

QCA::ConvertResult assemble(Contents contents, const BundlePassword &password, bool isChecked,
                            Bundle *bundle)
{
    int own = -1;
    const BundleKey key = findKey(&contents, password, &own);
    if (contents.isTooMuch)
        return QCA::ErrorDecode;
    // When the password is right, the parts that stay locked use an unsupported cipher.
    if (key.key.isNull())
        return contents.isLocked && !isChecked ? QCA::ErrorPassphrase : QCA::ErrorDecode;
    // Nobody could show a key without a certificate that says whose key it is.
    if (own < 0)
        return QCA::ErrorDecode;
    const BundleCertificate certificate = contents.certificates.takeAt(own);
    bundle->key = key.key;
    bundle->name = key.name.isEmpty() ? certificate.name : key.name;
    bundle->chain = {certificate.der};
    if (const auto data = CertificateData::fromDer(certificate.der))
        bundle->key.setPublicInfo(data->publicInfo());
    return complete(&bundle->chain, contents.certificates) ? QCA::ConvertGood : QCA::ErrorDecode;
}

QCA::ConvertResult readParsed(const QByteArray &der, PKCS12 *parsed, const Secret &password,
                              Bundle *bundle)
{
    if (macDigest(parsed).startsWith(Oid::RussianArc))
        loadGostEngine();
    const Safes safes(PKCS12_unpack_authsafes(parsed));
    const BundleMac mac(der, parsed);
    if (!isAffordable(mac, safes.get()))
        return QCA::ErrorDecode;
    BundlePassword fitting;
    switch (mac.check(parsed, passwordForms(password), &fitting)) {
    case MacResult::Wrong:
        return QCA::ErrorPassphrase;
    case MacResult::Unknown:
        return QCA::ErrorDecode;
    default:
        break;
    }
    Contents contents = readContents(safes.get(), fitting);
    return contents.isTooMuch ? QCA::ErrorDecode
                              : assemble(std::move(contents), fitting, mac.isPresent(), bundle);
}

} // namespace

QCA::ConvertResult readBundle(const QByteArray &der, const Secret &password, Bundle *bundle)
{
    const Pkcs12Handle parsed = der.size() <= MaxFileBytes ? parse(der) : nullptr;
    const QCA::ConvertResult result =
        parsed ? readParsed(der, parsed.get(), password, bundle) : QCA::ErrorDecode;
    ERR_clear_error();
    return result;
}

} // namespace Trivex
