// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

/// Keys that nobody should have made, and those of algorithms that few programs know.
namespace TrivexTest {

struct OddKey {
    const char *name;
    int type; ///< `Trivex::KeyType`
    const char *text; ///< what the QML type calls the algorithm
    QByteArray publicInfo; ///< SubjectPublicKeyInfo
};
QList<OddKey> oddPublicKeys();

/// A key for which anybody can sign, and a signature of SHA-256 for `message` that libcrypto takes
/// for a good one.
struct Forgery {
    const char *name;
    QByteArray publicInfo;
    QByteArray algorithm; ///< AlgorithmIdentifier of the signature
    std::function<QByteArray(const QByteArray &message)> sign;
};
QList<Forgery> forgeries();

/// PrivateKeyInfo, and whether it is a key that can be read.
struct OddPrivateKey {
    const char *name;
    QByteArray privateInfo;
    bool isReadable;
};
QList<OddPrivateKey> oddPrivateKeys();

/// Private keys that libcrypto has made, to be used with a certificate: PrivateKeyInfo and
/// SubjectPublicKeyInfo.
struct OddPair {
    const char *name;
    int type;
    QByteArray privateInfo;
    QByteArray publicInfo;
};
QList<OddPair> oddPairs();

/// An encoding with lengths as short as they can be, as libcrypto writes them again. Strings stay
/// what they are.
QByteArray shortest(const QByteArray &der);

} // namespace TrivexTest
