// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/signertexts.h"

#include <QtGlobal>

#include <algorithm>

namespace Trivex {

namespace {

enum Level { Fine = 1, Careful = 2, Wrong = 3 };

struct VerdictText {
    SignerReport::Verdict verdict;
    Level level;
    const char *headline;
    const char *advice;
};

constexpr VerdictText VerdictTexts[] = {
    //% "The document is not the one that was signed."
    {SignerReport::DocumentChanged, Wrong, QT_TRID_NOOP("trivex-app-signer-changed"),
     //% "It was changed after it was signed, or the signature belongs to another document."
     QT_TRID_NOOP("trivex-app-signer-changed-advice")},
    //% "The signature is wrong."
    {SignerReport::Damaged, Wrong, QT_TRID_NOOP("trivex-app-signer-damaged"),
     //% "It was damaged or forged. Ask for it to be sent again."
     QT_TRID_NOOP("trivex-app-signer-damaged-advice")},
    //% "This is not the certificate of the signature."
    {SignerReport::WrongCertificate, Wrong, QT_TRID_NOOP("trivex-app-signer-swapped"),
     //% "The signature names another certificate. Ask for the document to be signed again."
     QT_TRID_NOOP("trivex-app-signer-swapped-advice")},
    //% "The certificate of this signature is missing."
    {SignerReport::NoCertificate, Careful, QT_TRID_NOOP("trivex-app-signer-missing"),
     //% "Ask for the certificate, import it and verify once more."
     QT_TRID_NOOP("trivex-app-signer-missing-advice")},
    //% "This computer does not know the algorithm of this signature."
    {SignerReport::Unknown, Careful, QT_TRID_NOOP("trivex-app-signer-unknown"),
     //% "Verify it on a computer that does, or ask for another signature."
     QT_TRID_NOOP("trivex-app-signer-unknown-advice")},
    //% "The signature waits for its document."
    {SignerReport::Unchecked, Careful, QT_TRID_NOOP("trivex-app-signer-unchecked"),
     //% "Choose the document that was signed."
     QT_TRID_NOOP("trivex-app-signer-unchecked-advice")},
};

struct TrustText {
    SignerTrust trust;
    Level level;
    const char *headline;
    const char *advice;
};

constexpr TrustText TrustTexts[] = {
    //% "The signature is good, and the document is unchanged."
    {SignerTrust::Trusted, Fine, QT_TRID_NOOP("trivex-app-signer-good"), nullptr},
    {SignerTrust::ExpiredSince, Fine, "trivex-app-signer-good",
     //% "The certificate has expired since. It was valid at the time that the signature states."
     QT_TRID_NOOP("trivex-app-signer-expired-since")},
    //% "The document is unchanged, but the certificate was not valid when it was signed."
    {SignerTrust::NotValidThen, Careful, QT_TRID_NOOP("trivex-app-signer-not-valid"),
     //% "Ask for it to be signed with a valid certificate."
     QT_TRID_NOOP("trivex-app-signer-not-valid-advice")},
    //% "The document is unchanged. Whose signature it is can't be confirmed."
    {SignerTrust::Unknown, Careful, QT_TRID_NOOP("trivex-app-signer-untrusted"),
     //% "No path leads from the certificate to a root that this computer trusts. If you trust the
     //% issuer, import its root certificate and verify once more."
     QT_TRID_NOOP("trivex-app-signer-untrusted-advice")},
    //% "The certificate of this signature was revoked."
    {SignerTrust::Revoked, Wrong, QT_TRID_NOOP("trivex-app-signer-revoked"),
     //% "Do not rely on it. Ask for it to be signed with another certificate."
     QT_TRID_NOOP("trivex-app-signer-revoked-advice")},
    //% "The document is unchanged, but the certificate of this signature is not in order."
    //% "The certificate has expired. When it was signed is not stated."
    {SignerTrust::Expired, Careful, QT_TRID_NOOP("trivex-app-signer-expired"),
     "trivex-app-signer-not-valid-advice"},
    {SignerTrust::Faulty, Wrong, QT_TRID_NOOP("trivex-app-signer-faulty"),
     "trivex-app-signer-revoked-advice"},
};

SignerText textFor(Level level, const char *headline, const char *advice)
{
    return {level, qtTrId(headline), advice ? qtTrId(advice) : QString()};
}

SignerText trustText(SignerTrust trust)
{
    for (const TrustText &text : TrustTexts) {
        if (text.trust == trust)
            return textFor(text.level, text.headline, text.advice);
    }
    return {};
}

} // namespace

SignerText signerText(const SignerReport &signer, SignerTrust trust)
{
    for (const VerdictText &text : VerdictTexts) {
        if (text.verdict == signer.verdict)
            return textFor(text.level, text.headline, text.advice);
    }
    SignerText text = trustText(trust);
    if (signer.isDigestWeak) {
        text.level = std::max<int>(text.level, Careful);
        //% "It uses an outdated digest, with which documents can be forged."
        const QString weak = qtTrId("trivex-app-signer-weak");
        text.advice += text.advice.isEmpty() ? weak : QLatin1Char(' ') + weak;
    }
    return text;
}

} // namespace Trivex
