// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace TrivexTest {

/// A SoftHSM token of one's own in a temporary directory, on tmpfs where there is one: SoftHSM
/// rewrites an object's file for each attribute. Gone with the object.
///
/// `useInThisProcess()` sets the environment by which SoftHSM finds its configuration and our
/// provider its modules, so call it before QCA loads its plugins; nothing of the machine's own
/// configuration is read or written.
class TestToken {
public:
    explicit TestToken(const QString &label = QStringLiteral("Trivex Test"));

    /// False when SoftHSM or its tool is missing or refused; `problem()` then says which.
    bool isValid() const { return m_problem.isEmpty(); }
    QString problem() const { return m_problem; }

    QString label() const { return m_label; }
    static QByteArray pin() { return QByteArrayLiteral("123456"); }
    static QByteArray soPin() { return QByteArrayLiteral("87654321"); }
    /// The directory of everything that belongs to the token.
    QString path() const { return m_directory->path(); }
    QString configurationFile() const;
    /// The library that our provider loads: a copy below `path()`, so that a test can take the
    /// module away and bring it back.
    QString modulePath() const;
    /// SoftHSM's own library.
    static QString softHsmLibrary();

    /// Initialises one more token in the same module.
    bool addToken(const QString &label);
    /// The same as its administrator leaves it: the user has no PIN yet.
    bool addTokenWithoutUserPin(const QString &label);
    void removeModule();
    void restoreModule();

    void useInThisProcess() const;

    /// Runs `pkcs11-tool --module <SoftHSM> --token-label <label>` with `arguments`; with `login`,
    /// as the user. The output, or nothing on failure (which is logged).
    QByteArray tool(const QStringList &arguments, bool login = true) const;
    /// `keyType` as pkcs11-tool names it: "rsa:2048", "EC:secp384r1". `id` is hexadecimal.
    bool generateKeyPair(const QString &keyType, const QString &id, const QString &label) const;
    /// `type`: "cert", "pubkey" or "privkey"; `der` is written below the id and label.
    bool writeObject(const QString &type, const QByteArray &der, const QString &id,
                     const QString &label) const;
    /// Removes one object of that type and id, as another program would; false when none is there.
    bool removeObject(const QString &type, const QString &id) const;
    /// DER SubjectPublicKeyInfo of the public key with `id`.
    QByteArray publicKey(const QString &id) const;
    /// The number of keys and certificates, private ones included.
    int objectCount() const;

private:
    void initialise();
    bool initToken(const QString &label);

    QString m_label;
    QString m_problem;
    std::unique_ptr<QTemporaryDir> m_directory;
};

} // namespace TrivexTest
