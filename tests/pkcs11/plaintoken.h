// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QLibrary>
#include <QList>

#include <p11-kit/pkcs11.h>

namespace TrivexTest {

/// Self-signed ones of one key on P-256, numbered from `first` on, DER.
QList<QByteArray> plainCertificates(int count, int first = 0);

/// The first token of a module, used with plain PKCS#11 and OpenSSL calls: to fill it quickly, and
/// as what our reading is measured against.
class PlainToken {
public:
    explicit PlainToken(const QString &library);
    ~PlainToken();
    PlainToken(const PlainToken &) = delete;
    PlainToken &operator=(const PlainToken &) = delete;

    bool isOpen() const { return m_session != CK_INVALID_HANDLE; }
    bool logIn(const QByteArray &pin);
    void logOut() { m_module->C_Logout(m_session); }
    /// Numbered from `first` on.
    bool writeCertificates(int count, const QByteArray &pin, int first = 0);
    bool writeCertificates(const QList<QByteArray> &certificates, const QByteArray &pin);
    /// One that shows itself after a login only; its label is "0".
    bool writeHiddenCertificate(const QByteArray &der, const QByteArray &pin);
    /// Pairs of keys on P-256, each with the same id and label.
    bool makeKeys(int count, const QByteArray &label, const QByteArray &pin);
    /// Finds all certificates in one search, reads each in one call and decodes it; their number.
    int readCertificates();

private:
    bool write(const QByteArray &der, int number, bool isHidden = false);

    QLibrary m_library;
    CK_FUNCTION_LIST *m_module = nullptr;
    bool m_isStarter = false; ///< the process did not use the module before
    CK_SESSION_HANDLE m_session = CK_INVALID_HANDLE;
};

} // namespace TrivexTest
