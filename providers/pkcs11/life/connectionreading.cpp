// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/contents/damagedobjects.h"
#include "providers/pkcs11/life/partpace.h"
#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

using Pkcs11::Session;

namespace {

/// More than anybody looks at while they come, and few enough to be put together again and again.
constexpr size_t MostInPart = 500;

} // namespace

void TokenConnection::read(const PartHandler &showPart)
{
    PartPace pace;
    const bool isLoggedIn = checkLogin();
    const int anchor = m_anchors;
    // The anchor is not used, because a search that fails may leave its session with a search that
    // never ends. One session serves the whole reading, because each call to a card takes time.
    std::optional<Session> session = openPlain(Session::ReadOnly);
    const bool hasKeys = m_choice == CertificateChoice::All;
    // The keys come first: then it is known of each certificate whether it has one.
    TokenObjects read;
    if (hasKeys)
        readKeys(*session, &read);

    const auto warn = [this](const TokenCertificate &certificate) {
        warnOfDamaged(m_identity.storeId, m_store.name(), certificate);
    };
    ProgressHandler progress;
    if (showPart && hasKeys && m_contents->entries.empty()) {
        progress = [&](const std::vector<TokenCertificate> &certificates, size_t found) {
            if (certificates.size() > MostInPart || certificates.size() == found || !pace.isDue())
                return;
            TokenObjects part = read;
            part.certificates = certificates;
            showPart(partOf(std::move(part), found, isLoggedIn));
            pace.noteShown();
        };
    }
    bool areWhole = true;
    auto certificates = readCertificates(*session, m_choice, warn, &areWhole, progress);
    session.reset();
    if (hasKeys)
        settleKeys(&read, isLoggedIn);
    read.certificates = std::move(certificates);
    read.certificatesAreWhole = areWhole;
    takeObjects(std::move(read), anchor);
    m_certificatesRead = anchor;
    assemble();
    m_isUnlisted = false;
}

void TokenConnection::readKeysAgain()
{
    if (m_choice == CertificateChoice::All) {
        const bool isLoggedIn = checkLogin();
        const int anchor = m_anchors;
        std::optional<Session> session = openPlain(Session::ReadOnly);
        TokenObjects read;
        readKeys(*session, &read);
        session.reset();
        settleKeys(&read, isLoggedIn);
        read.certificates = std::move(m_objects.certificates);
        read.certificatesAreWhole = m_objects.certificatesAreWhole;
        takeObjects(std::move(read), anchor);
    }
    assemble();
}

// Some tokens hide private keys without saying that they want a login.
bool TokenConnection::mayHideKeys(const TokenObjects &read) const
{
    const TokenFlags current = flags();
    const bool says = m_hiddenLogin || current.needsLogin;
    return says || (current.hasUserPin && !current.pinMayBeEmpty && read.privateKeys.empty());
}

void TokenConnection::settleKeys(TokenObjects *read, bool wasLoggedIn)
{
    const bool mayHide = mayHideKeys(*read);
    // Another part of the process may have logged in since: what did not show itself before that
    // may be there all the same.
    const bool isLoggedIn = checkLogin() && wasLoggedIn;
    read->privateKeysHidden = !isLoggedIn && mayHide;
    if (!read->privateKeysHidden)
        m_shown = *read;
    else if (m_shown)
        read->takeKeysOf(*m_shown);
}

void TokenConnection::takeObjects(TokenObjects read, int anchor)
{
    m_objects = std::move(read);
    // The handles of remembered keys are no longer good.
    m_keysRead = m_objects.keysAreRemembered ? 0 : anchor;
}

// The flags are read each time: they tell whether it is this token still that is read.
TokenContentsPtr TokenConnection::partOf(TokenObjects read, size_t found, bool isLoggedIn) const
{
    read.privateKeysHidden = mayHideKeys(read) && !isLoggedIn;
    if (read.privateKeysHidden && m_shown)
        read.takeKeysOf(*m_shown);
    return assemblePart(std::move(read), found, m_identity.storeId);
}

} // namespace Trivex
