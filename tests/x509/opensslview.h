// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtCrypto>

struct OpensslCertificate;

// Compare what the certificate says with what openssl prints about its file; they fail the running
// test.
void compareNames(const QCA::Certificate &certificate, const OpensslCertificate &expected,
                  const QString &file);
void compareDates(const QCA::Certificate &certificate, const OpensslCertificate &expected);
/// The public key, and the identifiers of it and of the issuer's.
void compareKeys(const QCA::Certificate &certificate, const OpensslCertificate &expected,
                 const QString &file);
/// Constraints, usages, policies and locations.
void compareExtensions(const QCA::Certificate &certificate, const OpensslCertificate &expected);
