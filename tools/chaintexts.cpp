// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/chaintexts.h"

#include "qca/base/plaintext.h"
#include "qca/describe/words.h"
#include "qca/tokens/userstore.h"
#include "tools/texts.h"
#include "tools/validity.h"

#include <QDir>

#include <algorithm>

namespace Trivex {

namespace {

/// What stands for %1 in a sentence.
enum class Gap { None, Date, Issuer };

struct ReasonText {
    ChainReason reason;
    const char *id;
    Gap gap;
    const char *advice;
};

//% "Ask its issuer for a new certificate."
constexpr const char *Renew = QT_TRID_NOOP("trivex-app-chain-renew");
//% "Check the date of this computer."
constexpr const char *Clock = QT_TRID_NOOP("trivex-app-chain-clock");
//% "Do not rely on it."
constexpr const char *Refuse = QT_TRID_NOOP("trivex-app-chain-refuse");
//% "Save the newest list of its issuer in the folder %1, with a name that ends in “.crl”."
constexpr const char *NewList = QT_TRID_NOOP("trivex-app-chain-new-list");
//% "Take the certificate from the site of that issuer and import it."
constexpr const char *FindIssuer = QT_TRID_NOOP("trivex-app-chain-find-issuer");
//% "If you know whose it is and trust it, import it into your own files."
constexpr const char *TrustIt = QT_TRID_NOOP("trivex-app-chain-trust-it");
//% "Ask its holder for another certificate."
constexpr const char *Another = QT_TRID_NOOP("trivex-app-chain-another");
//% "Install what OpenSSL needs for this algorithm, or check it on another computer."
constexpr const char *Elsewhere = QT_TRID_NOOP("trivex-app-chain-elsewhere");

constexpr ReasonText Reasons[] = {
    //% "It ended on %1."
    {ChainReason::Expired, QT_TRID_NOOP("trivex-app-chain-expired"), Gap::Date, Renew},
    //% "It is valid from %1 on only."
    {ChainReason::NotYetValid, QT_TRID_NOOP("trivex-app-chain-not-yet"), Gap::Date, Clock},
    //% "It is revoked since %1."
    {ChainReason::Revoked, QT_TRID_NOOP("trivex-app-chain-revoked"), Gap::Date, Refuse},
    //% "It was not revoked at that time; it is since %1."
    {ChainReason::RevokedLater, QT_TRID_NOOP("trivex-app-chain-revoked-later"), Gap::Date, Refuse},
    //% "The list of revoked certificates ended on %1: what was revoked later is not known here."
    {ChainReason::ListExpired, QT_TRID_NOOP("trivex-app-chain-list-expired"), Gap::Date, NewList},
    //% "The list of revoked certificates is valid from %1 on only."
    {ChainReason::ListNotYetValid, QT_TRID_NOOP("trivex-app-chain-list-not-yet"), Gap::Date,
     NewList},
    //% "A list of revoked certificates in the name of its issuer is not signed by that issuer, and
    //% does not count."
    {ChainReason::ListNotSigned, QT_TRID_NOOP("trivex-app-chain-list-not-signed"), Gap::None,
     NewList},
    //% "The list of revoked certificates can't be understood in full, and does not count."
    {ChainReason::ListUnreadable, QT_TRID_NOOP("trivex-app-chain-list-unreadable"), Gap::None,
     NewList},
    //% "The certificate of its issuer “%1” is not on this computer."
    {ChainReason::IssuerMissing, QT_TRID_NOOP("trivex-app-chain-issuer-missing"), Gap::Issuer,
     FindIssuer},
    //% "The certificate of “%1” that is on this computer has another key than its issuer."
    {ChainReason::IssuerDiffers, QT_TRID_NOOP("trivex-app-chain-issuer-differs"), Gap::Issuer,
     FindIssuer},
    //% "This root is none of those that are trusted on this computer."
    {ChainReason::RootNotTrusted, QT_TRID_NOOP("trivex-app-chain-root"), Gap::None, TrustIt},
    //% "It vouches for itself, and is none of the roots that are trusted on this computer."
    {ChainReason::SelfSigned, QT_TRID_NOOP("trivex-app-chain-self-signed"), Gap::None, TrustIt},
    //% "Its signature is wrong: it was changed, or it is not from its issuer “%1”."
    {ChainReason::WrongSignature, QT_TRID_NOOP("trivex-app-chain-signature"), Gap::Issuer, Refuse},
    //% "It may not issue certificates, and has issued one."
    {ChainReason::NotAuthority, QT_TRID_NOOP("trivex-app-chain-no-authority"), Gap::None, Refuse},
    //% "There are more authorities below it than it allows."
    {ChainReason::TooManyBelow, QT_TRID_NOOP("trivex-app-chain-too-many"), Gap::None, Refuse},
    //% "Its issuer “%1” may not issue certificates for such a name."
    {ChainReason::NameNotAllowed, QT_TRID_NOOP("trivex-app-chain-name"), Gap::Issuer, Refuse},
    //% "It is meant for something else."
    {ChainReason::WrongPurpose, QT_TRID_NOOP("trivex-app-chain-purpose"), Gap::None, Another},
    //% "Its key is too short to be safe."
    {ChainReason::WeakKey, QT_TRID_NOOP("trivex-app-chain-weak-key"), Gap::None, Another},
    //% "It is signed in a way that is no longer safe."
    {ChainReason::WeakSignature, QT_TRID_NOOP("trivex-app-chain-weak-signature"), Gap::None,
     Another},
    //% "Everybody can sign in its name: its key protects nothing."
    {ChainReason::KeyOfAnybody, QT_TRID_NOOP("trivex-app-chain-key-of-anybody"), Gap::None, Refuse},
    //% "This computer can't check its signature: it does not know the algorithm."
    {ChainReason::AlgorithmUnknown, QT_TRID_NOOP("trivex-app-chain-algorithm"), Gap::None,
     Elsewhere},
    //% "It breaks the rules for certificates."
    {ChainReason::Malformed, QT_TRID_NOOP("trivex-app-chain-malformed"), Gap::None, Another},
    //% "It has a condition that this program does not know."
    {ChainReason::UnknownExtension, QT_TRID_NOOP("trivex-app-chain-extension"), Gap::None, Another},
    //% "The path is too long."
    {ChainReason::TooLong, QT_TRID_NOOP("trivex-app-chain-too-long"), Gap::None, Another},
    //% "It could not be checked."
    {ChainReason::Other, QT_TRID_NOOP("trivex-app-chain-other"), Gap::None, Another},
};

const ReasonText *textOf(ChainReason reason)
{
    const auto *found =
        std::find_if(std::begin(Reasons), std::end(Reasons),
                     [reason](const ReasonText &one) { return one.reason == reason; });
    return found == std::end(Reasons) ? nullptr : found;
}

QString anyDateText(const QDateTime &date)
{
    //% "an unknown date"
    return date.isValid() ? Validity().date(date) : qtTrId("trivex-app-chain-no-date");
}

} // namespace

QString chainWord(ChainVerdict verdict)
{
    switch (verdict) {
    case ChainVerdict::Good:
        //% "Trusted"
        return qtTrId("trivex-app-chain-good");
    case ChainVerdict::Doubtful:
        //% "With a reservation"
        return qtTrId("trivex-app-chain-doubtful");
    case ChainVerdict::Bad:
        //% "Not to be trusted"
        return qtTrId("trivex-app-chain-bad");
    case ChainVerdict::Unknown:
        break;
    }
    //% "Can't be checked"
    return qtTrId("trivex-app-chain-unknown");
}

QString chainText(const ChainFinding &finding, const ChainStep &step)
{
    const ReasonText *text = textOf(finding.reason);
    if (!text)
        return {};
    const QString sentence = qtTrId(text->id);
    if (text->gap == Gap::None)
        return sentence;
    if (text->gap == Gap::Issuer)
        return Texts::put(sentence, {plainText(step.issuer)});
    const QString dated = sentence.arg(anyDateText(finding.date));
    if (finding.revocation <= 0)
        return dated;
    //% "%1 The reason: %2."
    return qtTrId("trivex-app-chain-with-reason")
        .arg(dated, revocationReasonText(finding.revocation));
}

QString chainAdvice(ChainReason reason)
{
    const ReasonText *text = textOf(reason);
    if (!text)
        return {};
    const QString advice = qtTrId(text->advice);
    return text->advice == NewList ? advice.arg(QDir::toNativeSeparators(userStoreDirectory()))
                                   : advice;
}

const ChainStep *gravestStep(const ChainResult &result)
{
    // The root side first: what is wrong there is wrong for all that stands on it.
    const auto gravest = std::find_if(
        result.steps.crbegin(), result.steps.crend(), [&result](const ChainStep &step) {
            return step.verdict == result.verdict && !step.findings.isEmpty();
        });
    return gravest == result.steps.crend() ? nullptr : &*gravest;
}

QString chainSentence(const ChainResult &result)
{
    if (result.steps.isEmpty()) {
        //% "The path of this certificate can't be looked for: it can't be read in full."
        return qtTrId("trivex-app-chain-unreadable");
    }
    const ChainStep *step = gravestStep(result);
    if (!step) {
        //% "All is well up to a root that is trusted on this computer."
        return qtTrId("trivex-app-chain-all-good");
    }
    const QString text = chainText(step->findings.constFirst(), *step);
    if (step == &result.steps.constFirst())
        return text;
    //% "“%1”: %2"
    return Texts::put(qtTrId("trivex-app-chain-at-step"), {plainText(step->subject), text});
}

QString chainReport(const ChainResult &result)
{
    QString report;
    for (const ChainStep &step : result.steps) {
        report += plainText(step.subject) + QStringLiteral(": ") + chainWord(step.verdict);
        for (const ChainFinding &finding : step.findings)
            report += QStringLiteral("; %1 [%2]").arg(chainText(finding, step)).arg(finding.code);
        report += QLatin1Char('\n');
    }
    return report;
}

} // namespace Trivex
