// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariantMap>

struct OpensslCertificate;

/// The properties of the QML type for a certificate without a key bundle, made of what the command
/// printed. Texts are as without a catalogue: the identifiers.
QVariantMap expectedProperties(const OpensslCertificate &certificate, bool isSelfSigned);

/// A property that is meant to differ from what openssl prints.
struct PropertyException {
    QString file;
    QString property;
    QString value;
    const char *reason;
};
QList<PropertyException> propertyExceptions();

/// A certificate that libcrypto 3.5 refuses as a whole, because one of its times is too short;
/// earlier ones print what they make of it. All else in it is what it is in "date-fraction.der".
struct ShortTimes {
    QString file;
    QDateTime notBefore; ///< invalid where it is no time
    QDateTime notAfter;
};
QList<ShortTimes> shortTimes();
bool hasShortTimes(const QString &file);

/// A file whose name libcrypto does not take for text in the type that it claims, and which it
/// therefore refuses as a whole.
struct UnprintableFile {
    QString file;
    QString name; ///< the common name, of subject and issuer
    const char *reason;
};
QList<UnprintableFile> unprintableFiles();
bool isUnprintable(const QString &file);
