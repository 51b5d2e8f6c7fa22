// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QtCrypto>

/// The lines that `openssl x509` prints about a DER file of the corpus; empty when it can't read
/// the file.
QStringList opensslX509(const QString &file, const QStringList &arguments);

/// True for the files whose names are no text in the type that they claim.
bool isUnreadableName(const QString &file);

// Compare what the certificate says with what openssl prints about its file; they fail the running
// test.
void compareNames(const QCA::Certificate &certificate, const QString &file);
void compareDates(const QCA::Certificate &certificate, const QString &file);
void compareKeys(const QCA::Certificate &certificate, const QString &file);
