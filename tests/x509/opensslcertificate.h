// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

/// One certificate in the words of `openssl x509`, read from what the command prints and nothing
/// else.
struct OpensslCertificate {
    /// Dotted identifier and value, in the order of the encoding, the members of a set one by one.
    using Name = QList<QPair<QString, QString>>;

    Name subject;
    Name issuer;
    QByteArray serial; ///< the octets of the INTEGER's content, as short as they can be
    QDateTime notBefore; ///< invalid for a "Bad time value"
    QDateTime notAfter;
    QString signatureAlgorithm; ///< libcrypto's name, or the dotted identifier
    QString keyAlgorithm; ///< libcrypto's long name, or the dotted identifier
    QStringList text; ///< the lines of the whole text

    /// The values of an attribute, in order.
    static QStringList values(const Name &name, const QString &oid);
    /// The line behind the title of an extension; empty when it is not there.
    QString extension(const QString &title) const;
    /// All of them, without their indent.
    QStringList extensionLines(const QString &title) const;
    /// The octets of a key identifier; empty where openssl prints something else for want of one.
    QByteArray keyId(const QString &title) const;
};

/// False when `openssl x509` refuses the file, which is DER or PEM.
bool readWithOpenssl(const QString &path, OpensslCertificate *certificate);

/// Whether `openssl verify` finds that the certificate's own key has signed it.
bool isSelfSignedForOpenssl(const QString &path, bool withGostEngine);
