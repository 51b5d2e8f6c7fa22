// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

/// The object identifiers of keys, curves, digests and signatures, each by its dotted form. An
/// object identifier of the product is written in one of algorithmids.h, attributeids.h and
/// extensionids.h; tables elsewhere name it.
namespace Trivex::Oid {

// Keys.
inline constexpr char RsaEncryption[] = "1.2.840.113549.1.1.1";
inline constexpr char RsaOaep[] = "1.2.840.113549.1.1.7";
inline constexpr char RsaPss[] = "1.2.840.113549.1.1.10";
inline constexpr char Dsa[] = "1.2.840.10040.4.1";
inline constexpr char DhKeyAgreement[] = "1.2.840.113549.1.3.1"; // of PKCS#3
inline constexpr char DhPublicNumber[] = "1.2.840.10046.2.1"; // of X9.42
inline constexpr char EcPublicKey[] = "1.2.840.10045.2.1";
inline constexpr char X25519[] = "1.3.101.110";
inline constexpr char X448[] = "1.3.101.111";
inline constexpr char Ed25519[] = "1.3.101.112"; // the signature as well
inline constexpr char Ed448[] = "1.3.101.113"; // the signature as well
inline constexpr char GostKey94[] = "1.2.643.2.2.20";
inline constexpr char GostKey2001[] = "1.2.643.2.2.19";
inline constexpr char GostKey256[] = "1.2.643.7.1.1.1.1";
inline constexpr char GostKey512[] = "1.2.643.7.1.1.1.2";
inline constexpr char MlDsa44[] = "2.16.840.1.101.3.4.3.17"; // the signature as well
inline constexpr char MlDsa65[] = "2.16.840.1.101.3.4.3.18"; // the signature as well
inline constexpr char MlDsa87[] = "2.16.840.1.101.3.4.3.19"; // the signature as well

// Curves.
inline constexpr char Prime192v1[] = "1.2.840.10045.3.1.1";
inline constexpr char Secp224r1[] = "1.3.132.0.33";
inline constexpr char Prime256v1[] = "1.2.840.10045.3.1.7";
inline constexpr char Secp384r1[] = "1.3.132.0.34";
inline constexpr char Secp521r1[] = "1.3.132.0.35";
inline constexpr char Secp256k1[] = "1.3.132.0.10";
inline constexpr char BrainpoolP256r1[] = "1.3.36.3.3.2.8.1.1.7";
inline constexpr char BrainpoolP384r1[] = "1.3.36.3.3.2.8.1.1.11";
inline constexpr char BrainpoolP512r1[] = "1.3.36.3.3.2.8.1.1.13";
inline constexpr char Sm2Curve[] = "1.2.156.10197.1.301";
inline constexpr char Edwards25519[] = "1.3.6.1.4.1.11591.15.1"; // as older tokens name it

// Parameter sets of GOST R 34.10 (RFC 4357, RFC 7836).
inline constexpr char GostCurve2001A[] = "1.2.643.2.2.35.1";
inline constexpr char GostCurve2001B[] = "1.2.643.2.2.35.2";
inline constexpr char GostCurve2001C[] = "1.2.643.2.2.35.3";
inline constexpr char GostCurve2001Xa[] = "1.2.643.2.2.36.0";
inline constexpr char GostCurve2001Xb[] = "1.2.643.2.2.36.1";
inline constexpr char GostCurve256A[] = "1.2.643.7.1.2.1.1.1";
inline constexpr char GostCurve256B[] = "1.2.643.7.1.2.1.1.2";
inline constexpr char GostCurve256C[] = "1.2.643.7.1.2.1.1.3";
inline constexpr char GostCurve256D[] = "1.2.643.7.1.2.1.1.4";
inline constexpr char GostCurve512A[] = "1.2.643.7.1.2.1.2.1";
inline constexpr char GostCurve512B[] = "1.2.643.7.1.2.1.2.2";
inline constexpr char GostCurve512C[] = "1.2.643.7.1.2.1.2.3";

// Digests.
inline constexpr char Sha1[] = "1.3.14.3.2.26";
inline constexpr char Sha224[] = "2.16.840.1.101.3.4.2.4";
inline constexpr char Sha256[] = "2.16.840.1.101.3.4.2.1";
inline constexpr char Sha384[] = "2.16.840.1.101.3.4.2.2";
inline constexpr char Sha512[] = "2.16.840.1.101.3.4.2.3";
inline constexpr char GostDigest94[] = "1.2.643.2.2.9";
inline constexpr char GostDigestSet94[] =
    "1.2.643.2.2.30.1"; // the parameters of the digest, which key parameters name
inline constexpr char GostDigest256[] = "1.2.643.7.1.1.2.2";
inline constexpr char GostDigest512[] = "1.2.643.7.1.1.2.3";

// Masks.
inline constexpr char Mgf1[] = "1.2.840.113549.1.1.8";

// Signatures.
inline constexpr char RsaWithMd2[] = "1.2.840.113549.1.1.2";
inline constexpr char RsaWithMd4[] = "1.2.840.113549.1.1.3";
inline constexpr char RsaWithMd5[] = "1.2.840.113549.1.1.4";
inline constexpr char RsaWithSha1[] = "1.2.840.113549.1.1.5";
inline constexpr char RsaWithSha1Old[] = "1.3.14.3.2.29";
inline constexpr char RsaWithRipemd160[] = "1.3.36.3.3.1.2";
inline constexpr char RsaWithSha224[] = "1.2.840.113549.1.1.14";
inline constexpr char RsaWithSha256[] = "1.2.840.113549.1.1.11";
inline constexpr char RsaWithSha384[] = "1.2.840.113549.1.1.12";
inline constexpr char RsaWithSha512[] = "1.2.840.113549.1.1.13";
inline constexpr char RsaWithSha512Cut224[] = "1.2.840.113549.1.1.15"; // cut to 224 bits
inline constexpr char RsaWithSha512Cut256[] = "1.2.840.113549.1.1.16";
inline constexpr char RsaWithSha3Of224[] = "2.16.840.1.101.3.4.3.13"; // SHA-3 of 224 bits
inline constexpr char RsaWithSha3Of256[] = "2.16.840.1.101.3.4.3.14";
inline constexpr char RsaWithSha3Of384[] = "2.16.840.1.101.3.4.3.15";
inline constexpr char RsaWithSha3Of512[] = "2.16.840.1.101.3.4.3.16";
inline constexpr char EcdsaWithSha1[] = "1.2.840.10045.4.1";
inline constexpr char EcdsaWithSha224[] = "1.2.840.10045.4.3.1";
inline constexpr char EcdsaWithSha256[] = "1.2.840.10045.4.3.2";
inline constexpr char EcdsaWithSha384[] = "1.2.840.10045.4.3.3";
inline constexpr char EcdsaWithSha512[] = "1.2.840.10045.4.3.4";
inline constexpr char EcdsaWithSha3Of224[] = "2.16.840.1.101.3.4.3.9";
inline constexpr char EcdsaWithSha3Of256[] = "2.16.840.1.101.3.4.3.10";
inline constexpr char EcdsaWithSha3Of384[] = "2.16.840.1.101.3.4.3.11";
inline constexpr char EcdsaWithSha3Of512[] = "2.16.840.1.101.3.4.3.12";
inline constexpr char DsaWithSha1[] = "1.2.840.10040.4.3";
inline constexpr char DsaWithSha224[] = "2.16.840.1.101.3.4.3.1";
inline constexpr char DsaWithSha256[] = "2.16.840.1.101.3.4.3.2";
inline constexpr char DsaWithSha384[] = "2.16.840.1.101.3.4.3.3";
inline constexpr char DsaWithSha512[] = "2.16.840.1.101.3.4.3.4";
inline constexpr char Sm2WithSm3[] = "1.2.156.10197.1.501";
inline constexpr char GostSignature94[] = "1.2.643.2.2.4";
inline constexpr char GostSignature2001[] = "1.2.643.2.2.3";
inline constexpr char GostSignature256[] = "1.2.643.7.1.1.3.2";
inline constexpr char GostSignature512[] = "1.2.643.7.1.1.3.3";

// What several of them begin with, as far as the dot.
inline constexpr char RussianArc[] = "1.2.643.";
inline constexpr char GostArc2001[] = "1.2.643.2.2.";
inline constexpr char GostDigestArc94[] = "1.2.643.2.2.30.";
inline constexpr char PkcsArc[] = "1.2.840.113549.1.";

} // namespace Trivex::Oid
