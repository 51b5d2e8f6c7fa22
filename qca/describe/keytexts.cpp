// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/describe/keytexts.h"

#include "qca/asn1/algorithmids.h"
#include "qca/describe/algorithmtexts.h"
#include "qca/describe/objectnames.h"
#include "qca/describe/words.h"
#include "qca/keys/publickeyfields.h"

#include <algorithm>

namespace Trivex {

namespace {

enum class Form { Octets, Rsa, Dsa, Dh, DhX942, Curve, Gost };

struct KeyKind {
    const char *oid;
    const char *name;
    Form form;
    int bits; ///< 0: to be found in the key
};

constexpr KeyKind Kinds[] = {
    {Oid::RsaEncryption, "RSA", Form::Rsa, 0},
    {Oid::RsaPss, "RSA-PSS", Form::Rsa, 0},
    {Oid::RsaOaep, "RSA-OAEP", Form::Rsa, 0},
    {Oid::Dsa, "DSA", Form::Dsa, 0},
    {Oid::DhKeyAgreement, "DH", Form::Dh, 0},
    {Oid::DhPublicNumber, "DH", Form::DhX942, 0},
    {Oid::EcPublicKey, "Elliptic Curve", Form::Curve, 0},
    {Oid::X25519, "X25519", Form::Octets, 256},
    {Oid::X448, "X448", Form::Octets, 448},
    {Oid::Ed25519, "Ed25519", Form::Octets, 256},
    {Oid::Ed448, "Ed448", Form::Octets, 456},
    {Oid::GostKey94, "GOST R 34.10-94", Form::Gost, 1024},
    {Oid::GostKey2001, "GOST R 34.10-2001", Form::Gost, 256},
    {Oid::GostKey256, "GOST R 34.10-2012", Form::Gost, 256},
    {Oid::GostKey512, "GOST R 34.10-2012", Form::Gost, 512},
    {Oid::MlDsa44, "ML-DSA-44", Form::Octets, 0},
    {Oid::MlDsa65, "ML-DSA-65", Form::Octets, 0},
    {Oid::MlDsa87, "ML-DSA-87", Form::Octets, 0},
};

struct Curve {
    const char *oid;
    const char *name;
    int bits;
};

constexpr Curve Curves[] = {
    {Oid::Prime192v1, "P-192 (prime192v1)", 192},   {Oid::Secp224r1, "P-224 (secp224r1)", 224},
    {Oid::Prime256v1, "P-256 (prime256v1)", 256},   {Oid::Secp384r1, "P-384 (secp384r1)", 384},
    {Oid::Secp521r1, "P-521 (secp521r1)", 521},     {Oid::Secp256k1, "secp256k1", 256},
    {Oid::BrainpoolP256r1, "brainpoolP256r1", 256}, {Oid::BrainpoolP384r1, "brainpoolP384r1", 384},
    {Oid::BrainpoolP512r1, "brainpoolP512r1", 512}, {Oid::Sm2Curve, "SM2", 256},
};

/// Parameters of GOST keys (RFC 4357, RFC 7836, RFC 9215): a digest, or a set of a curve.
struct GostName {
    const char *oid;
    const char *standard;
    const char *set; ///< null for a digest
};

constexpr GostName GostNames[] = {
    {Oid::GostDigestSet94, "GOST R 34.11-94", nullptr},
    {Oid::GostDigest256, "GOST R 34.11-2012 (256 bit)", nullptr},
    {Oid::GostDigest512, "GOST R 34.11-2012 (512 bit)", nullptr},
    {Oid::GostCurve2001A, "GOST R 34.10-2001", "A"},
    {Oid::GostCurve2001B, "GOST R 34.10-2001", "B"},
    {Oid::GostCurve2001C, "GOST R 34.10-2001", "C"},
    {Oid::GostCurve2001Xa, "GOST R 34.10-2001", "XA"},
    {Oid::GostCurve2001Xb, "GOST R 34.10-2001", "XB"},
    {Oid::GostCurve256A, "GOST R 34.10-2012 (256 bit)", "A"},
    {Oid::GostCurve256B, "GOST R 34.10-2012 (256 bit)", "B"},
    {Oid::GostCurve256C, "GOST R 34.10-2012 (256 bit)", "C"},
    {Oid::GostCurve256D, "GOST R 34.10-2012 (256 bit)", "D"},
    {Oid::GostCurve512A, "GOST R 34.10-2012 (512 bit)", "A"},
    {Oid::GostCurve512B, "GOST R 34.10-2012 (512 bit)", "B"},
    {Oid::GostCurve512C, "GOST R 34.10-2012 (512 bit)", "C"},
};

template <class Row, size_t Size> const Row *rowOf(const Row (&table)[Size], const QByteArray &oid)
{
    const auto *const found = std::find_if(std::begin(table), std::end(table),
                                           [&oid](const Row &row) { return oid == row.oid; });
    return found == std::end(table) ? nullptr : found;
}

int bitsOf(Der::Slice integer)
{
    int start = 0;
    while (start < integer.size && integer.at(start) == 0)
        ++start;
    if (start == integer.size)
        return 0;
    int bits = 8 * (integer.size - start);
    for (int mask = 0x80; mask && !(integer.at(start) & mask); mask >>= 1)
        --bits;
    return bits;
}

/// The INTEGERs of a SEQUENCE, as many as there are.
QVector<Der::Slice> integersIn(Der::Slice sequence)
{
    QVector<Der::Slice> numbers;
    Der::Slice content;
    if (!Der::Reader(sequence).next(Der::Sequence, &content))
        return numbers;
    Der::Reader reader(content);
    Der::Slice number;
    while (numbers.size() < 8 && reader.next(Der::Integer, &number))
        numbers += number;
    return numbers;
}

Der::Slice curveOid(const PublicKeyFields &fields)
{
    Der::Slice oid;
    return Der::Reader(fields.parameters).next(Der::ObjectIdentifier, &oid) ? oid : Der::Slice();
}

int curveBits(const PublicKeyFields &fields)
{
    if (const Curve *curve = rowOf(Curves, Der::oidText(curveOid(fields))))
        return curve->bits;
    // An unnamed curve: as many as a coordinate of the point has.
    const Der::Slice point = fields.key();
    const bool isCompressed = !point.isEmpty() && point.at(0) != 4;
    return point.isEmpty() ? 0 : (point.size - 1) * (isCompressed ? 8 : 4);
}

int sizeOf(const KeyKind &kind, const PublicKeyFields &fields)
{
    if (kind.bits > 0)
        return kind.bits;
    switch (kind.form) {
    case Form::Rsa:
        return bitsOf(integersIn(fields.key()).value(0));
    case Form::Dsa:
    case Form::Dh:
    case Form::DhX942:
        return bitsOf(integersIn(fields.parameters).value(0));
    case Form::Curve:
        return curveBits(fields);
    default:
        return 0;
    }
}

QString keyText(const KeyKind *kind, const PublicKeyFields &fields)
{
    if (!kind)
        return objectText(fields.algorithm);
    const QString name = localizedAlgorithm(QString::fromLatin1(kind->name));
    const int bits = sizeOf(*kind, fields);
    if (bits <= 0)
        return name;
    //% "%1, %n bits"
    return qtTrId("trivex-app-key-kind", bits).arg(name);
}

void addBytes(const QString &label, Der::Slice bytes, QVector<ShownRow> *rows)
{
    if (!bytes.isEmpty())
        *rows += {{}, label, bytesText(bytes, 2 * MaxShownBytes), true};
}

void addNumbers(const QStringList &labels, const QVector<Der::Slice> &numbers,
                QVector<ShownRow> *rows)
{
    for (int i = 0; i < qMin(labels.size(), numbers.size()); ++i)
        addBytes(labels.at(i), numbers.at(i), rows);
}

void addRsa(const PublicKeyFields &fields, QVector<ShownRow> *rows)
{
    const QVector<Der::Slice> numbers = integersIn(fields.key());
    if (numbers.size() < 2)
        return addBytes(qtTrId("trivex-app-key-bytes"), fields.key(), rows);
    //% "Exponent"
    *rows += {{}, qtTrId("trivex-app-key-exponent"), numberText(numbers.at(1)), false};
    //% "Modulus"
    addBytes(qtTrId("trivex-app-key-modulus"), numbers.at(0), rows);
    addBytes(qtTrId("trivex-app-key-parameters"),
             fields.parameters.size > 2 ? fields.parameters : Der::Slice(), rows);
}

void addDiscrete(const QStringList &labels, const PublicKeyFields &fields, QVector<ShownRow> *rows)
{
    addBytes(qtTrId("trivex-app-key-bytes"), fields.key(), rows);
    addNumbers(labels, integersIn(fields.parameters), rows);
}

void addCurve(const PublicKeyFields &fields, QVector<ShownRow> *rows)
{
    const Der::Slice oid = curveOid(fields);
    const Curve *curve = rowOf(Curves, Der::oidText(oid));
    //% "Curve"
    const QString label = qtTrId("trivex-app-key-curve");
    if (curve)
        *rows += {{}, label, QString::fromLatin1(curve->name), false};
    else if (!oid.isEmpty())
        *rows += {{}, label, objectText(oid), false};
    else
        addBytes(qtTrId("trivex-app-key-parameters"), fields.parameters, rows);
    addBytes(qtTrId("trivex-app-key-bytes"), fields.key(), rows);
}

QString gostParameterText(Der::Slice oid)
{
    const QByteArray dotted = Der::oidText(oid);
    const GostName *known = rowOf(GostNames, dotted);
    if (!known)
        return objectText(oid);
    const QString standard = localizedAlgorithm(QString::fromLatin1(known->standard));
    if (!known->set)
        return standard;
    //% "%1, parameter set %2 (%3)"
    return qtTrId("trivex-app-key-set")
        .arg(standard, QString::fromLatin1(known->set), QString::fromLatin1(dotted));
}

void addGost(const PublicKeyFields &fields, QVector<ShownRow> *rows)
{
    Der::Slice content;
    Der::Slice oid;
    Der::Reader(fields.parameters).next(Der::Sequence, &content);
    Der::Reader reader(content);
    // Curve, digest and cipher (RFC 4491, 2.3.2).
    //% "Digest"
    for (const QString &label : {qtTrId("trivex-app-key-curve"), qtTrId("trivex-app-key-digest"),
                                 //% "Cipher"
                                 qtTrId("trivex-app-key-cipher")}) {
        if (reader.next(Der::ObjectIdentifier, &oid))
            *rows += {{}, label, gostParameterText(oid), false};
    }
    if (!reader.atEnd() || content.isEmpty())
        addBytes(qtTrId("trivex-app-key-parameters"), fields.parameters, rows);
    Der::Slice point;
    addBytes(qtTrId("trivex-app-key-bytes"),
             Der::single(fields.key(), Der::OctetString, &point) ? point : fields.key(), rows);
}

void addOctets(const PublicKeyFields &fields, QVector<ShownRow> *rows)
{
    //% "Parameters"
    addBytes(qtTrId("trivex-app-key-parameters"), fields.parameters, rows);
    //% "Key"
    addBytes(qtTrId("trivex-app-key-bytes"), fields.key(), rows);
}

} // namespace

QString publicKeyText(const QByteArray &publicInfo)
{
    PublicKeyFields fields;
    return findPublicKeyFields(Der::sliceOf(publicInfo), &fields)
        ? keyText(rowOf(Kinds, fields.oid()), fields)
        : QString();
}

QVector<ShownRow> publicKeyRows(const QByteArray &publicInfo)
{
    QVector<ShownRow> rows;
    PublicKeyFields fields;
    //% "Kind and size"
    const QString label = qtTrId("trivex-app-key-kind-and-size");
    if (!findPublicKeyFields(Der::sliceOf(publicInfo), &fields)) {
        rows += {{}, label, damagedText(Der::sliceOf(publicInfo)), true};
        return rows;
    }
    const KeyKind *kind = rowOf(Kinds, fields.oid());
    rows += {{}, label, keyText(kind, fields), false};
    switch (kind ? kind->form : Form::Octets) {
    case Form::Rsa:
        addRsa(fields, &rows);
        break;
    case Form::Dsa:
        addDiscrete({QStringLiteral("p"), QStringLiteral("q"), QStringLiteral("g")}, fields, &rows);
        break;
    case Form::Dh:
        addDiscrete({QStringLiteral("p"), QStringLiteral("g"), QStringLiteral("l")}, fields, &rows);
        break;
    case Form::DhX942:
        addDiscrete({QStringLiteral("p"), QStringLiteral("g"), QStringLiteral("q")}, fields, &rows);
        break;
    case Form::Curve:
        addCurve(fields, &rows);
        break;
    case Form::Gost:
        addGost(fields, &rows);
        break;
    case Form::Octets:
        addOctets(fields, &rows);
        break;
    }
    return rows;
}

} // namespace Trivex
