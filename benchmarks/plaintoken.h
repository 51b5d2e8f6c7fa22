// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <p11-kit/pkcs11.h>

#include <QByteArray>
#include <QString>
#include <QVector>

/// A token through nothing but PKCS#11 calls, written as straight as they allow: the baseline of
/// the token benchmarks. Any failure ends the program, because a baseline that failed measures
/// nothing.
class PlainToken {
public:
    /// Loads the module `library` and opens a session with the token called `label`.
    PlainToken(const QString &library, const QString &label);
    ~PlainToken();
    PlainToken(const PlainToken &) = delete;
    PlainToken &operator=(const PlainToken &) = delete;

    void login(const QByteArray &pin);

    /// A pair of handles; the private one is 0 where there is only a public object.
    struct Pair {
        CK_OBJECT_HANDLE publicKey = 0;
        CK_OBJECT_HANDLE privateKey = 0;
    };

    /// Reads all certificates in one search and parses each with OpenSSL, names included. Their
    /// number.
    int readCertificates();
    CK_OBJECT_HANDLE writeCertificate(const QByteArray &der, const QByteArray &id);
    /// An RSA key pair made by OpenSSL (`EVP_PKEY`), as a bundle brings it.
    Pair writeRsaPair(const void *nativeKey, const QByteArray &id);
    /// How many objects of that class have the attribute.
    CK_ULONG count(CK_OBJECT_CLASS objectClass, CK_ATTRIBUTE_TYPE type, const QByteArray &value);
    /// RSA with the public exponent 3, or P-384 for 384.
    Pair generate(int bits, const QByteArray &id);
    /// PKCS#1 v1.5 over `data` as it is, or ECDSA.
    QByteArray sign(CK_OBJECT_HANDLE key, CK_MECHANISM_TYPE mechanism, const QByteArray &data);
    void destroy(const Pair &pair);
    void destroy(CK_OBJECT_HANDLE object);

private:
    static void check(CK_RV result, const char *call);
    CK_OBJECT_HANDLE create(QVector<CK_ATTRIBUTE> object);
    bool openSession(const QString &label);

    void *m_library = nullptr;
    CK_FUNCTION_LIST *m_calls = nullptr;
    CK_SESSION_HANDLE m_session = 0;
};
