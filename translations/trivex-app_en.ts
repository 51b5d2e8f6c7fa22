<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The Trivex developers -->
<!-- SPDX-License-Identifier: MIT -->
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="trivex-app-ability-curves">
        <source>Elliptic curves</source>
        <translation>Elliptic curves</translation>
    </message>
    <message id="trivex-app-ability-decrypts">
        <source>decrypts</source>
        <translation>decrypts</translation>
    </message>
    <message id="trivex-app-ability-edwards">
        <source>Ed25519</source>
        <translation>Ed25519</translation>
    </message>
    <message id="trivex-app-ability-gost">
        <source>GOST R 34.10</source>
        <translation>GOST R 34.10</translation>
    </message>
    <message id="trivex-app-ability-makes">
        <source>makes keys</source>
        <translation>makes keys</translation>
    </message>
    <message id="trivex-app-ability-rsa">
        <source>RSA</source>
        <translation>RSA</translation>
    </message>
    <message id="trivex-app-ability-signs">
        <source>signs</source>
        <translation>signs</translation>
    </message>
    <message id="trivex-app-ability-sizes">
        <source>%1, %2 to %3 bits</source>
        <translation>%1, %2 to %3 bits</translation>
    </message>
    <message id="trivex-app-about-others">
        <source>Certificates of other people and services, and of issuers in between, on tokens and in your files.</source>
        <translation>Certificates of other people and services, and of issuers in between, on tokens and in your files.</translation>
    </message>
    <message id="trivex-app-about-personal">
        <source>Certificates whose key is on one of your tokens. Insert a token, import a bundle or make a request.</source>
        <translation>Certificates whose key is on one of your tokens. Insert a token, import a bundle or make a request.</translation>
    </message>
    <message id="trivex-app-about-requests">
        <source>Requests that wait for their certificate. Make one, send it to a certification authority and import what comes back.</source>
        <translation>Requests that wait for their certificate. Make one, send it to a certification authority and import what comes back.</translation>
    </message>
    <message id="trivex-app-about-roots">
        <source>Root certificates that you added yourself.</source>
        <translation>Root certificates that you added yourself.</translation>
    </message>
    <message id="trivex-app-about-system">
        <source>Root certificates that this system trusts. They are managed by the system.</source>
        <translation>Root certificates that this system trusts. They are managed by the system.</translation>
    </message>
    <message id="trivex-app-about-this-token">
        <source>About this token</source>
        <translation>About this token</translation>
    </message>
    <message id="trivex-app-about-token">
        <source>There is nothing on this token yet. Import a certificate or make a request.</source>
        <translation>There is nothing on this token yet. Import a certificate or make a request.</translation>
    </message>
    <message id="trivex-app-about-users">
        <source>Certificates from the files in your own certificate folder.</source>
        <translation>Certificates from the files in your own certificate folder.</translation>
    </message>
    <message id="trivex-app-access-issuers">
        <source>Certificate of the issuer</source>
        <translation>Certificate of the issuer</translation>
    </message>
    <message id="trivex-app-admin-failed">
        <source>The token or its reader reported a fault (%1). Insert the token again and retry.</source>
        <translation>The token or its reader reported a fault (%1). Insert the token again and retry.</translation>
    </message>
    <message id="trivex-app-admin-gone">
        <source>The token was removed. Insert it and start again.</source>
        <translation>The token was removed. Insert it and start again.</translation>
    </message>
    <message id="trivex-app-admin-half">
        <source>The token is empty now, but has no PIN yet. Set it with the administrator PIN.</source>
        <translation>The token is empty now, but has no PIN yet. Set it with the administrator PIN.</translation>
    </message>
    <message id="trivex-app-admin-left">
        <source>What was begun on “%1” has failed.</source>
        <translation>What was begun on “%1” has failed.</translation>
    </message>
    <message id="trivex-app-admin-length">
        <source>Length of the PIN: %1 to %2 characters.</source>
        <translation>Length of the PIN: %1 to %2 characters.</translation>
    </message>
    <message id="trivex-app-admin-loss">
        <source>Certificates on it: %1. Keys on it: %2.</source>
        <translation>Certificates on it: %1. Keys on it: %2.</translation>
    </message>
    <message id="trivex-app-admin-loss-hidden">
        <source>There may be more keys, which show only after the PIN.</source>
        <translation>There may be more keys, which show only after the PIN.</translation>
    </message>
    <message id="trivex-app-admin-loss-unknown">
        <source>What is on it could not be read yet.</source>
        <translation>What is on it could not be read yet.</translation>
    </message>
    <message id="trivex-app-admin-no-pin-yet">
        <source>There is no PIN yet that could be changed. Set it with the administrator PIN.</source>
        <translation>There is no PIN yet that could be changed. Set it with the administrator PIN.</translation>
    </message>
    <message id="trivex-app-admin-not-supported">
        <source>The token lets no program do this. Use the program that came with it.</source>
        <translation>The token lets no program do this. Use the program that came with it.</translation>
    </message>
    <message id="trivex-app-admin-officer-final">
        <source>This is the last try: a wrong administrator PIN locks it for good.</source>
        <translation>This is the last try: a wrong administrator PIN locks it for good.</translation>
    </message>
    <message id="trivex-app-admin-officer-locked">
        <source>The administrator PIN is locked. Ask whoever gave out the token.</source>
        <translation>The administrator PIN is locked. Ask whoever gave out the token.</translation>
    </message>
    <message id="trivex-app-admin-officer-low">
        <source>A wrong administrator PIN was given before. After several wrong ones it is locked.</source>
        <translation>A wrong administrator PIN was given before. After several wrong ones it is locked.</translation>
    </message>
    <message id="trivex-app-admin-shortest">
        <source>Length of the PIN: at least %1.</source>
        <translation>Length of the PIN: at least %1.</translation>
    </message>
    <message id="trivex-app-admin-wrong-officer-pin">
        <source>The administrator PIN is not right. Type it again.</source>
        <translation>The administrator PIN is not right. Type it again.</translation>
    </message>
    <message id="trivex-app-admin-wrong-pin">
        <source>The PIN is not right. Type it again.</source>
        <translation>The PIN is not right. Type it again.</translation>
    </message>
    <message id="trivex-app-advice-cancelled">
        <source>Nothing was changed. Start again when you like.</source>
        <translation>Nothing was changed. Start again when you like.</translation>
    </message>
    <message id="trivex-app-advice-cannot-decrypt">
        <source>Ask for the document once more, encrypted for another certificate of yours.</source>
        <translation>Ask for the document once more, encrypted for another certificate of yours.</translation>
    </message>
    <message id="trivex-app-advice-cannot-sign">
        <source>Choose a key of another kind, or one on another token.</source>
        <translation>Choose a key of another kind, or one on another token.</translation>
    </message>
    <message id="trivex-app-advice-cannot-write">
        <source>Nothing was written. Choose another token.</source>
        <translation>Nothing was written. Choose another token.</translation>
    </message>
    <message id="trivex-app-advice-data">
        <source>Choose another key: this one can't be used for what was asked of it.</source>
        <translation>Choose another key: this one can't be used for what was asked of it.</translation>
    </message>
    <message id="trivex-app-advice-device">
        <source>Take the token out, insert it again and retry. If it stays so, copy the report.</source>
        <translation>Take the token out, insert it again and retry. If it stays so, copy the report.</translation>
    </message>
    <message id="trivex-app-advice-full">
        <source>Remove certificates that are no longer needed, or use another token.</source>
        <translation>Remove certificates that are no longer needed, or use another token.</translation>
    </message>
    <message id="trivex-app-advice-in-use">
        <source>Close the other programs that work with this token, then start again.</source>
        <translation>Close the other programs that work with this token, then start again.</translation>
    </message>
    <message id="trivex-app-advice-key-ambiguous">
        <source>Nothing was removed. Give them other names with the program of the token's maker.</source>
        <translation>Nothing was removed. Give them other names with the program of the token's maker.</translation>
    </message>
    <message id="trivex-app-advice-key-names">
        <source>Give them other names with the program of the token's maker, then start again.</source>
        <translation>Give them other names with the program of the token's maker, then start again.</translation>
    </message>
    <message id="trivex-app-advice-key-stays">
        <source>Nothing was written. Use the token itself, or make a new key where it is needed.</source>
        <translation>Nothing was written. Use the token itself, or make a new key where it is needed.</translation>
    </message>
    <message id="trivex-app-advice-last-try">
        <source>Make sure of the PIN, agree to the last try, then type it again.</source>
        <translation>Make sure of the PIN, agree to the last try, then type it again.</translation>
    </message>
    <message id="trivex-app-advice-locked">
        <source>Ask whoever gave out the token to unlock the PIN with the administrator PIN.</source>
        <translation>Ask whoever gave out the token to unlock the PIN with the administrator PIN.</translation>
    </message>
    <message id="trivex-app-advice-new-pin">
        <source>Choose another one: of another length, or of digits alone.</source>
        <translation>Choose another one: of another length, or of digits alone.</translation>
    </message>
    <message id="trivex-app-advice-no-private-key">
        <source>Choose another certificate, or the token on which its key was made.</source>
        <translation>Choose another certificate, or the token on which its key was made.</translation>
    </message>
    <message id="trivex-app-advice-not-found">
        <source>Check that the right token is inserted.</source>
        <translation>Check that the right token is inserted.</translation>
    </message>
    <message id="trivex-app-advice-not-logged-in">
        <source>Take the token out and insert it again. If it stays so, have it set up anew.</source>
        <translation>Take the token out and insert it again. If it stays so, have it set up anew.</translation>
    </message>
    <message id="trivex-app-advice-not-offered">
        <source>Use the program that came with the token.</source>
        <translation>Use the program that came with the token.</translation>
    </message>
    <message id="trivex-app-advice-pin">
        <source>Start again and type the PIN of this token.</source>
        <translation>Start again and type the PIN of this token.</translation>
    </message>
    <message id="trivex-app-advice-pin-expired">
        <source>Change the PIN, then start again.</source>
        <translation>Change the PIN, then start again.</translation>
    </message>
    <message id="trivex-app-advice-pin-not-set">
        <source>Set it with the administrator PIN, then start again.</source>
        <translation>Set it with the administrator PIN, then start again.</translation>
    </message>
    <message id="trivex-app-advice-read-only">
        <source>Choose another token, or have the protection removed.</source>
        <translation>Choose another token, or have the protection removed.</translation>
    </message>
    <message id="trivex-app-advice-removed">
        <source>Insert the token and start again. Nothing half-done was left on it.</source>
        <translation>Insert the token and start again. Nothing half-done was left on it.</translation>
    </message>
    <message id="trivex-app-advice-unsupported">
        <source>Choose another algorithm or another token.</source>
        <translation>Choose another algorithm or another token.</translation>
    </message>
    <message id="trivex-app-advice-wrong-key-kind">
        <source>Choose an RSA key.</source>
        <translation>Choose an RSA key.</translation>
    </message>
    <message id="trivex-app-algorithm">
        <source>Algorithm</source>
        <translation>Algorithm</translation>
    </message>
    <message id="trivex-app-and-more" numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message id="trivex-app-another-request">
        <source>Another request</source>
        <translation>Another request</translation>
    </message>
    <message id="trivex-app-arrived">
        <source>The certificate for “%1” has arrived; its request is done.</source>
        <translation>The certificate for “%1” has arrived; its request is done.</translation>
    </message>
    <message id="trivex-app-attribute-domain">
        <source>Domain component</source>
        <translation>Domain component</translation>
    </message>
    <message id="trivex-app-attribute-generation">
        <source>Generation</source>
        <translation>Generation</translation>
    </message>
    <message id="trivex-app-attribute-given-name">
        <source>Given name</source>
        <translation>Given name</translation>
    </message>
    <message id="trivex-app-attribute-name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="trivex-app-attribute-ogrn">
        <source>OGRN</source>
        <translation>OGRN</translation>
    </message>
    <message id="trivex-app-attribute-organization-id">
        <source>Identifier of the organization</source>
        <translation>Identifier of the organization</translation>
    </message>
    <message id="trivex-app-attribute-registration-country">
        <source>Country of registration</source>
        <translation>Country of registration</translation>
    </message>
    <message id="trivex-app-attribute-registration-locality">
        <source>Place of registration</source>
        <translation>Place of registration</translation>
    </message>
    <message id="trivex-app-attribute-registration-state">
        <source>Region of registration</source>
        <translation>Region of registration</translation>
    </message>
    <message id="trivex-app-attribute-serial">
        <source>Serial number in the name</source>
        <translation>Serial number in the name</translation>
    </message>
    <message id="trivex-app-attribute-street">
        <source>Street</source>
        <translation>Street</translation>
    </message>
    <message id="trivex-app-attribute-surname">
        <source>Surname</source>
        <translation>Surname</translation>
    </message>
    <message id="trivex-app-attribute-unstructured">
        <source>Unstructured name</source>
        <translation>Unstructured name</translation>
    </message>
    <message id="trivex-app-attributes">
        <source>Attributes</source>
        <translation>Attributes</translation>
    </message>
    <message id="trivex-app-back">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="trivex-app-basic-authority">
        <source>Certification authority</source>
        <translation>Certification authority</translation>
    </message>
    <message id="trivex-app-basic-depth">
        <source>Authorities below it at most</source>
        <translation>Authorities below it at most</translation>
    </message>
    <message id="trivex-app-bit-number">
        <source>bit %1</source>
        <translation>bit %1</translation>
    </message>
    <message id="trivex-app-bits">
        <source>bits</source>
        <translation>bits</translation>
    </message>
    <message id="trivex-app-bundle-ask">
        <source>This bundle is protected by a password.</source>
        <translation>This bundle is protected by a password.</translation>
    </message>
    <message id="trivex-app-bundle-decode">
        <source>This bundle can't be read: it is damaged or uses an encryption that this computer does not know. A wrong password is not the reason. Ask for it to be exported again.</source>
        <translation>This bundle can't be read: it is damaged or uses an encryption that this computer does not know. A wrong password is not the reason. Ask for it to be exported again.</translation>
    </message>
    <message id="trivex-app-bundle-open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="trivex-app-bundle-opening">
        <source>Opening the bundle…</source>
        <translation>Opening the bundle…</translation>
    </message>
    <message id="trivex-app-bundle-password">
        <source>The password is not right. Check the keyboard layout and type it again.</source>
        <translation>The password is not right. Check the keyboard layout and type it again.</translation>
    </message>
    <message id="trivex-app-bundle-password-field">
        <source>Password of the bundle</source>
        <translation>Password of the bundle</translation>
    </message>
    <message id="trivex-app-busy-decrypt">
        <source>Decrypting…</source>
        <translation>Decrypting…</translation>
    </message>
    <message id="trivex-app-busy-export">
        <source>Copying the private key…</source>
        <translation>Copying the private key…</translation>
    </message>
    <message id="trivex-app-busy-generate">
        <source>Making a key…</source>
        <translation>Making a key…</translation>
    </message>
    <message id="trivex-app-busy-initialise">
        <source>Initialising the token…</source>
        <translation>Initialising the token…</translation>
    </message>
    <message id="trivex-app-busy-loading">
        <source>Reading the token…</source>
        <translation>Reading the token…</translation>
    </message>
    <message id="trivex-app-busy-remove">
        <source>Removing…</source>
        <translation>Removing…</translation>
    </message>
    <message id="trivex-app-busy-set-pin">
        <source>Setting the PIN…</source>
        <translation>Setting the PIN…</translation>
    </message>
    <message id="trivex-app-busy-sign">
        <source>Signing…</source>
        <translation>Signing…</translation>
    </message>
    <message id="trivex-app-busy-verify">
        <source>Checking…</source>
        <translation>Checking…</translation>
    </message>
    <message id="trivex-app-busy-write">
        <source>Writing…</source>
        <translation>Writing…</translation>
    </message>
    <message id="trivex-app-bytes" numerus="yes">
        <source>%n bytes</source>
        <translation>
            <numerusform>%n byte</numerusform>
            <numerusform>%n bytes</numerusform>
        </translation>
    </message>
    <message id="trivex-app-bytes-in-all" numerus="yes">
        <source>%n bytes in all</source>
        <translation>
            <numerusform>%n byte in all</numerusform>
            <numerusform>%n bytes in all</numerusform>
        </translation>
    </message>
    <message id="trivex-app-cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="trivex-app-categories">
        <source>Categories</source>
        <translation>Categories</translation>
    </message>
    <message id="trivex-app-category-others">
        <source>Others</source>
        <translation>Others</translation>
    </message>
    <message id="trivex-app-category-personal">
        <source>Personal</source>
        <translation>Personal</translation>
    </message>
    <message id="trivex-app-category-requests">
        <source>Requests</source>
        <translation>Requests</translation>
    </message>
    <message id="trivex-app-category-roots">
        <source>Roots</source>
        <translation>Roots</translation>
    </message>
    <message id="trivex-app-category-system">
        <source>System</source>
        <translation>System</translation>
    </message>
    <message id="trivex-app-category-users">
        <source>My files</source>
        <translation>My files</translation>
    </message>
    <message id="trivex-app-cause-cancelled">
        <source>The operation was stopped.</source>
        <translation>The operation was stopped.</translation>
    </message>
    <message id="trivex-app-cause-cannot-decrypt">
        <source>The token can't decrypt with this key.</source>
        <translation>The token can't decrypt with this key.</translation>
    </message>
    <message id="trivex-app-cause-cannot-export">
        <source>The token does not hand over keys of this kind.</source>
        <translation>The token does not hand over keys of this kind.</translation>
    </message>
    <message id="trivex-app-cause-cannot-sign">
        <source>The token can't make this signature with this key.</source>
        <translation>The token can't make this signature with this key.</translation>
    </message>
    <message id="trivex-app-cause-cannot-write">
        <source>The token takes no keys or certificates of this kind or size.</source>
        <translation>The token takes no keys or certificates of this kind or size.</translation>
    </message>
    <message id="trivex-app-cause-data">
        <source>The token did not accept the data.</source>
        <translation>The token did not accept the data.</translation>
    </message>
    <message id="trivex-app-cause-device">
        <source>The token or its reader reported a fault.</source>
        <translation>The token or its reader reported a fault.</translation>
    </message>
    <message id="trivex-app-cause-full">
        <source>There is no room left on the token.</source>
        <translation>There is no room left on the token.</translation>
    </message>
    <message id="trivex-app-cause-in-use">
        <source>Another program is using the token.</source>
        <translation>Another program is using the token.</translation>
    </message>
    <message id="trivex-app-cause-key-ambiguous">
        <source>Several keys have the same name and id: which one is meant can't be told.</source>
        <translation>Several keys have the same name and id: which one is meant can't be told.</translation>
    </message>
    <message id="trivex-app-cause-key-stays">
        <source>The private key never leaves the token.</source>
        <translation>The private key never leaves the token.</translation>
    </message>
    <message id="trivex-app-cause-last-try">
        <source>Only one try is left: a wrong PIN locks the token.</source>
        <translation>Only one try is left: a wrong PIN locks the token.</translation>
    </message>
    <message id="trivex-app-cause-locked">
        <source>The token has locked its PIN after too many wrong tries.</source>
        <translation>The token has locked its PIN after too many wrong tries.</translation>
    </message>
    <message id="trivex-app-cause-new-pin">
        <source>The token does not accept the new PIN.</source>
        <translation>The token does not accept the new PIN.</translation>
    </message>
    <message id="trivex-app-cause-no-pin">
        <source>No PIN was given.</source>
        <translation>No PIN was given.</translation>
    </message>
    <message id="trivex-app-cause-no-private-key">
        <source>The token holds no private key for this certificate.</source>
        <translation>The token holds no private key for this certificate.</translation>
    </message>
    <message id="trivex-app-cause-not-found">
        <source>The key or certificate is no longer on the token.</source>
        <translation>The key or certificate is no longer on the token.</translation>
    </message>
    <message id="trivex-app-cause-not-logged-in">
        <source>The token wants a login, but does not let anybody log in.</source>
        <translation>The token wants a login, but does not let anybody log in.</translation>
    </message>
    <message id="trivex-app-cause-not-offered">
        <source>The token does not offer this.</source>
        <translation>The token does not offer this.</translation>
    </message>
    <message id="trivex-app-cause-pin-expired">
        <source>The PIN of the token has to be changed first.</source>
        <translation>The PIN of the token has to be changed first.</translation>
    </message>
    <message id="trivex-app-cause-pin-not-set">
        <source>The token has no PIN for its user yet.</source>
        <translation>The token has no PIN for its user yet.</translation>
    </message>
    <message id="trivex-app-cause-read-only">
        <source>The token is write-protected.</source>
        <translation>The token is write-protected.</translation>
    </message>
    <message id="trivex-app-cause-removed">
        <source>The token was removed.</source>
        <translation>The token was removed.</translation>
    </message>
    <message id="trivex-app-cause-unsupported">
        <source>The token does not know this kind or size of key.</source>
        <translation>The token does not know this kind or size of key.</translation>
    </message>
    <message id="trivex-app-cause-wrong-key-kind">
        <source>This key can't make this kind of signature.</source>
        <translation>This key can't make this kind of signature.</translation>
    </message>
    <message id="trivex-app-cause-wrong-pin">
        <source>The PIN is not right.</source>
        <translation>The PIN is not right.</translation>
    </message>
    <message id="trivex-app-certificates">
        <source>Certificates</source>
        <translation>Certificates</translation>
    </message>
    <message id="trivex-app-chain-list-not-signed">
        <source>A list of revoked certificates in the name of its issuer is not signed by that issuer, and does not count.</source>
        <translation>A list of revoked certificates in the name of its issuer is not signed by that issuer, and does not count.</translation>
    </message>
    <message id="trivex-app-chain-purpose-any">
        <source>Any purpose</source>
        <translation>Any purpose</translation>
    </message>
    <message id="trivex-app-chain-purpose-client">
        <source>TLS client</source>
        <translation>TLS client</translation>
    </message>
    <message id="trivex-app-chain-purpose-code">
        <source>Code signing</source>
        <translation>Code signing</translation>
    </message>
    <message id="trivex-app-chain-purpose-label">
        <source>To be used for</source>
        <translation>To be used for</translation>
    </message>
    <message id="trivex-app-chain-purpose-mail">
        <source>Protected e-mail</source>
        <translation>Protected e-mail</translation>
    </message>
    <message id="trivex-app-chain-purpose-server">
        <source>TLS server</source>
        <translation>TLS server</translation>
    </message>
    <message id="trivex-app-change">
        <source>Change</source>
        <translation>Change</translation>
    </message>
    <message id="trivex-app-change-officer-pin">
        <source>Change administrator PIN…</source>
        <translation>Change administrator PIN…</translation>
    </message>
    <message id="trivex-app-change-officer-pin-title">
        <source>Change the administrator PIN</source>
        <translation>Change the administrator PIN</translation>
    </message>
    <message id="trivex-app-change-pin">
        <source>Change PIN…</source>
        <translation>Change PIN…</translation>
    </message>
    <message id="trivex-app-change-pin-title">
        <source>Change the PIN</source>
        <translation>Change the PIN</translation>
    </message>
    <message id="trivex-app-choose-all">
        <source>Select all</source>
        <translation>Select all</translation>
    </message>
    <message id="trivex-app-choose-file">
        <source>Choose a file…</source>
        <translation>Choose a file…</translation>
    </message>
    <message id="trivex-app-choose-other">
        <source>Choose another file…</source>
        <translation>Choose another file…</translation>
    </message>
    <message id="trivex-app-chosen" numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n selected</numerusform>
            <numerusform>%n selected</numerusform>
        </translation>
    </message>
    <message id="trivex-app-clear-search">
        <source>Clear the search</source>
        <translation>Clear the search</translation>
    </message>
    <message id="trivex-app-close">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="trivex-app-colours">
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message id="trivex-app-colours-dark">
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message id="trivex-app-colours-light">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="trivex-app-colours-system">
        <source>As the system</source>
        <translation>As the system</translation>
    </message>
    <message id="trivex-app-copied">
        <source>Copied</source>
        <translation>Copied</translation>
    </message>
    <message id="trivex-app-copy-all">
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message id="trivex-app-copy-part">
        <source>Copy the selected part</source>
        <translation>Copy the selected part</translation>
    </message>
    <message id="trivex-app-copy-pem">
        <source>Copy as text</source>
        <translation>Copy as text</translation>
    </message>
    <message id="trivex-app-copy-report">
        <source>Copy report</source>
        <translation>Copy report</translation>
    </message>
    <message id="trivex-app-copy-value">
        <source>Copy the value</source>
        <translation>Copy the value</translation>
    </message>
    <message id="trivex-app-copy-with-label">
        <source>Copy with its label</source>
        <translation>Copy with its label</translation>
    </message>
    <message id="trivex-app-create-request">
        <source>Create the request</source>
        <translation>Create the request</translation>
    </message>
    <message id="trivex-app-damaged-bytes">
        <source>Damaged: %1</source>
        <translation>Damaged: %1</translation>
    </message>
    <message id="trivex-app-damaged-part">
        <source>Damaged part</source>
        <translation>Damaged part</translation>
    </message>
    <message id="trivex-app-details">
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message id="trivex-app-details-none">
        <source>Nothing selected</source>
        <translation>Nothing selected</translation>
    </message>
    <message id="trivex-app-details-none-text">
        <source>Select a row to read what is in it.</source>
        <translation>Select a row to read what is in it.</translation>
    </message>
    <message id="trivex-app-details-several">
        <source>Several rows are selected</source>
        <translation>Several rows are selected</translation>
    </message>
    <message id="trivex-app-digits-length">
        <source>The number of digits is not right for this identifier.</source>
        <translation>The number of digits is not right for this identifier.</translation>
    </message>
    <message id="trivex-app-digits-only">
        <source>Only digits are expected here.</source>
        <translation>Only digits are expected here.</translation>
    </message>
    <message id="trivex-app-digits-wrong">
        <source>The check digits do not match: there may be a typing mistake.</source>
        <translation>The check digits do not match: there may be a typing mistake.</translation>
    </message>
    <message id="trivex-app-document-changed">
        <source>The document was changed in the meantime.</source>
        <translation>The document was changed in the meantime.</translation>
    </message>
    <message id="trivex-app-document-changed-advice">
        <source>It has been read again. See what it holds now, then sign or verify once more.</source>
        <translation>It has been read again. See what it holds now, then sign or verify once more.</translation>
    </message>
    <message id="trivex-app-document-exists">
        <source>There is a file of this name. Replace it, or choose another name.</source>
        <translation>There is a file of this name. Replace it, or choose another name.</translation>
    </message>
    <message id="trivex-app-document-moved">
        <source>The document was changed while it was being signed. See what it holds now, then sign once more.</source>
        <translation>The document was changed while it was being signed. See what it holds now, then sign once more.</translation>
    </message>
    <message id="trivex-app-document-no-digest">
        <source>This computer lacks the digest that belongs to this key. Install the GOST engine of OpenSSL, or choose another key.</source>
        <translation>This computer lacks the digest that belongs to this key. Install the GOST engine of OpenSSL, or choose another key.</translation>
    </message>
    <message id="trivex-app-document-not-good">
        <source>The key did not make a signature that fits its certificate. Nothing was written; choose another key.</source>
        <translation>The key did not make a signature that fits its certificate. Nothing was written; choose another key.</translation>
    </message>
    <message id="trivex-app-document-not-read">
        <source>The document could not be read. Check the file and try again.</source>
        <translation>The document could not be read. Check the file and try again.</translation>
    </message>
    <message id="trivex-app-document-not-signed">
        <source>The document was not signed. Check the token and try again.</source>
        <translation>The document was not signed. Check the token and try again.</translation>
    </message>
    <message id="trivex-app-document-not-written">
        <source>The signature could not be written. Choose another folder or check the disk.</source>
        <translation>The signature could not be written. Choose another folder or check the disk.</translation>
    </message>
    <message id="trivex-app-document-reread">
        <source>The document was changed and has been read again.</source>
        <translation>The document was changed and has been read again.</translation>
    </message>
    <message id="trivex-app-document-same-file">
        <source>The signature would take the place of its own document. Choose another name.</source>
        <translation>The signature would take the place of its own document. Choose another name.</translation>
    </message>
    <message id="trivex-app-document-saved">
        <source>The document was saved.</source>
        <translation>The document was saved.</translation>
    </message>
    <message id="trivex-app-document-stopped">
        <source>Signing was stopped. Nothing was written; start again when you like.</source>
        <translation>Signing was stopped. Nothing was written; start again when you like.</translation>
    </message>
    <message id="trivex-app-document-type">
        <source>Files of this type can't be signed here. PDF, PNG, JPEG and plain text can.</source>
        <translation>Files of this type can't be signed here. PDF, PNG, JPEG and plain text can.</translation>
    </message>
    <message id="trivex-app-document-unsaved">
        <source>The document was not saved.</source>
        <translation>The document was not saved.</translation>
    </message>
    <message id="trivex-app-document-wrong-key">
        <source>This key can't make such a signature. Choose another key.</source>
        <translation>This key can't make such a signature. Choose another key.</translation>
    </message>
    <message id="trivex-app-drag-refused">
        <source>These rows can't be dragged.</source>
        <translation>These rows can't be dragged.</translation>
    </message>
    <message id="trivex-app-drag-too-many">
        <source>No more than %1 rows can be dragged at once. Select fewer, or export them.</source>
        <translation>No more than %1 rows can be dragged at once. Select fewer, or export them.</translation>
    </message>
    <message id="trivex-app-drop-document">
        <source>Drop a document here: PDF, PNG, JPEG or plain text.</source>
        <translation>Drop a document here: PDF, PNG, JPEG or plain text.</translation>
    </message>
    <message id="trivex-app-edit">
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message id="trivex-app-edit-doubled">
        <source>This request holds its usages or its further names twice, and programs differ in which of the two counts. Leave them as they were, or make a new request.</source>
        <translation>This request holds its usages or its further names twice, and programs differ in which of the two counts. Leave them as they were, or make a new request.</translation>
    </message>
    <message id="trivex-app-edit-loses-extensions">
        <source>The usages and further names in this request hold data that Trivex can't read. Saving would lose it. Leave them as they were, or make a new request.</source>
        <translation>The usages and further names in this request hold data that Trivex can't read. Saving would lose it. Leave them as they were, or make a new request.</translation>
    </message>
    <message id="trivex-app-edit-loses-name">
        <source>Beside a value that you changed, the name in this request holds data that Trivex can't read. Saving would lose it. Leave that value as it was, or make a new request.</source>
        <translation>Beside a value that you changed, the name in this request holds data that Trivex can't read. Saving would lose it. Leave that value as it was, or make a new request.</translation>
    </message>
    <message id="trivex-app-edit-request-title">
        <source>Edit the request</source>
        <translation>Edit the request</translation>
    </message>
    <message id="trivex-app-edit-usages">
        <source>Usage of the key and the certificate</source>
        <translation>Usage of the key and the certificate</translation>
    </message>
    <message id="trivex-app-empty">
        <source>Nothing here yet</source>
        <translation>Nothing here yet</translation>
    </message>
    <message id="trivex-app-ends-soon" numerus="yes">
        <source>%n expire soon</source>
        <translation>
            <numerusform>%n expires soon</numerusform>
            <numerusform>%n expire soon</numerusform>
        </translation>
    </message>
    <message id="trivex-app-error-title">
        <source>That did not work</source>
        <translation>That did not work</translation>
    </message>
    <message id="trivex-app-expired-confirm">
        <source>Sign all the same</source>
        <translation>Sign all the same</translation>
    </message>
    <message id="trivex-app-expired-text">
        <source>It expired on %1. Whoever checks the signature may refuse it.</source>
        <translation>It expired on %1. Whoever checks the signature may refuse it.</translation>
    </message>
    <message id="trivex-app-expired-title">
        <source>Sign with this certificate?</source>
        <translation>Sign with this certificate?</translation>
    </message>
    <message id="trivex-app-expiring" numerus="yes">
        <source>%n certificates expire within 30 days</source>
        <translation>
            <numerusform>%n certificate expires within 30 days</numerusform>
            <numerusform>%n certificates expire within 30 days</numerusform>
        </translation>
    </message>
    <message id="trivex-app-expiring-show">
        <source>Show them</source>
        <translation>Show them</translation>
    </message>
    <message id="trivex-app-export">
        <source>Export…</source>
        <translation>Export…</translation>
    </message>
    <message id="trivex-app-export-failed">
        <source>The file was not exported.</source>
        <translation>The file was not exported.</translation>
    </message>
    <message id="trivex-app-export-key">
        <source>Export with the private key</source>
        <translation>Export with the private key</translation>
    </message>
    <message id="trivex-app-export-key-accept">
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message id="trivex-app-export-key-again">
        <source>The same password again</source>
        <translation>The same password again</translation>
    </message>
    <message id="trivex-app-export-key-busy">
        <source>Making the file…</source>
        <translation>Making the file…</translation>
    </message>
    <message id="trivex-app-export-key-hint">
        <source>Use a long one: nothing limits the number of tries.</source>
        <translation>Use a long one: nothing limits the number of tries.</translation>
    </message>
    <message id="trivex-app-export-key-password">
        <source>Password of the file</source>
        <translation>Password of the file</translation>
    </message>
    <message id="trivex-app-export-key-text">
        <source>The file will hold the private key, its certificate and the issuers. Whoever has the file and its password can sign in the holder's name.</source>
        <translation>The file will hold the private key, its certificate and the issuers. Whoever has the file and its password can sign in the holder's name.</translation>
    </message>
    <message id="trivex-app-export-key-title">
        <source>Export with the private key</source>
        <translation>Export with the private key</translation>
    </message>
    <message id="trivex-app-export-name">
        <source>certificates</source>
        <translation>certificates</translation>
    </message>
    <message id="trivex-app-export-no-password">
        <source>Type a password: without one, everybody could read the key.</source>
        <translation>Type a password: without one, everybody could read the key.</translation>
    </message>
    <message id="trivex-app-export-not-made">
        <source>This kind of key can't be put into a file. Use it where it is.</source>
        <translation>This kind of key can't be put into a file. Use it where it is.</translation>
    </message>
    <message id="trivex-app-export-nothing">
        <source>There is nothing to export any more. Select the rows again.</source>
        <translation>There is nothing to export any more. Select the rows again.</translation>
    </message>
    <message id="trivex-app-export-title">
        <source>Save as</source>
        <translation>Save as</translation>
    </message>
    <message id="trivex-app-export-together">
        <source>Export into one file…</source>
        <translation>Export into one file…</translation>
    </message>
    <message id="trivex-app-exported">
        <source>Exported to %1</source>
        <translation>Exported to %1</translation>
    </message>
    <message id="trivex-app-ext-application-purposes">
        <source>Purposes for applications</source>
        <translation>Purposes for applications</translation>
    </message>
    <message id="trivex-app-ext-authority-version">
        <source>Version of the authority</source>
        <translation>Version of the authority</translation>
    </message>
    <message id="trivex-app-ext-basic">
        <source>Basic constraints</source>
        <translation>Basic constraints</translation>
    </message>
    <message id="trivex-app-ext-certificate-issuer">
        <source>Issuer of the certificate</source>
        <translation>Issuer of the certificate</translation>
    </message>
    <message id="trivex-app-ext-challenge">
        <source>Challenge password</source>
        <translation>Challenge password</translation>
    </message>
    <message id="trivex-app-ext-critical">
        <source>%1 (critical)</source>
        <translation>%1 (critical)</translation>
    </message>
    <message id="trivex-app-ext-delta">
        <source>Changes since the list</source>
        <translation>Changes since the list</translation>
    </message>
    <message id="trivex-app-ext-directory-attributes">
        <source>Attributes of the holder</source>
        <translation>Attributes of the holder</translation>
    </message>
    <message id="trivex-app-ext-draft">
        <source>Draft for certificate transparency</source>
        <translation>Draft for certificate transparency</translation>
    </message>
    <message id="trivex-app-ext-empty">
        <source>empty</source>
        <translation>empty</translation>
    </message>
    <message id="trivex-app-ext-fresh-lists">
        <source>Lists of changes</source>
        <translation>Lists of changes</translation>
    </message>
    <message id="trivex-app-ext-holder-access">
        <source>Addresses of the holder</source>
        <translation>Addresses of the holder</translation>
    </message>
    <message id="trivex-app-ext-holder-names">
        <source>Other names of the holder</source>
        <translation>Other names of the holder</translation>
    </message>
    <message id="trivex-app-ext-holder-tool">
        <source>Signature tool of the holder</source>
        <translation>Signature tool of the holder</translation>
    </message>
    <message id="trivex-app-ext-identification">
        <source>How the identity was checked</source>
        <translation>How the identity was checked</translation>
    </message>
    <message id="trivex-app-ext-inhibit-any">
        <source>Certificates to skip before any policy counts no more</source>
        <translation>Certificates to skip before any policy counts no more</translation>
    </message>
    <message id="trivex-app-ext-invalid-since">
        <source>Invalid since</source>
        <translation>Invalid since</translation>
    </message>
    <message id="trivex-app-ext-issuer-access">
        <source>Addresses of the issuer</source>
        <translation>Addresses of the issuer</translation>
    </message>
    <message id="trivex-app-ext-issuer-key-id">
        <source>Issuer's key identifier</source>
        <translation>Issuer's key identifier</translation>
    </message>
    <message id="trivex-app-ext-issuer-names">
        <source>Other names of the issuer</source>
        <translation>Other names of the issuer</translation>
    </message>
    <message id="trivex-app-ext-issuer-tools">
        <source>Signature tools of the issuer</source>
        <translation>Signature tools of the issuer</translation>
    </message>
    <message id="trivex-app-ext-key-id">
        <source>Key identifier</source>
        <translation>Key identifier</translation>
    </message>
    <message id="trivex-app-ext-key-period">
        <source>Usage period of the private key</source>
        <translation>Usage period of the private key</translation>
    </message>
    <message id="trivex-app-ext-key-usage">
        <source>Key usage</source>
        <translation>Key usage</translation>
    </message>
    <message id="trivex-app-ext-list-number">
        <source>Number of the list</source>
        <translation>Number of the list</translation>
    </message>
    <message id="trivex-app-ext-list-points">
        <source>Lists of revoked certificates</source>
        <translation>Lists of revoked certificates</translation>
    </message>
    <message id="trivex-app-ext-list-scope">
        <source>What the list covers</source>
        <translation>What the list covers</translation>
    </message>
    <message id="trivex-app-ext-name-constraints">
        <source>Name constraints</source>
        <translation>Name constraints</translation>
    </message>
    <message id="trivex-app-ext-netscape-authority">
        <source>Netscape: revocation address of the authority</source>
        <translation>Netscape: revocation address of the authority</translation>
    </message>
    <message id="trivex-app-ext-netscape-base">
        <source>Netscape: base address</source>
        <translation>Netscape: base address</translation>
    </message>
    <message id="trivex-app-ext-netscape-comment">
        <source>Netscape: comment</source>
        <translation>Netscape: comment</translation>
    </message>
    <message id="trivex-app-ext-netscape-policy">
        <source>Netscape: policy address</source>
        <translation>Netscape: policy address</translation>
    </message>
    <message id="trivex-app-ext-netscape-renewal">
        <source>Netscape: renewal address</source>
        <translation>Netscape: renewal address</translation>
    </message>
    <message id="trivex-app-ext-netscape-revocation">
        <source>Netscape: revocation address</source>
        <translation>Netscape: revocation address</translation>
    </message>
    <message id="trivex-app-ext-netscape-server">
        <source>Netscape: server name</source>
        <translation>Netscape: server name</translation>
    </message>
    <message id="trivex-app-ext-netscape-type">
        <source>Netscape: type of certificate</source>
        <translation>Netscape: type of certificate</translation>
    </message>
    <message id="trivex-app-ext-ocsp-no-check">
        <source>No revocation check of this OCSP key</source>
        <translation>No revocation check of this OCSP key</translation>
    </message>
    <message id="trivex-app-ext-policies">
        <source>Certificate policies</source>
        <translation>Certificate policies</translation>
    </message>
    <message id="trivex-app-ext-policy-constraints">
        <source>Policy constraints</source>
        <translation>Policy constraints</translation>
    </message>
    <message id="trivex-app-ext-policy-mappings">
        <source>Policy mappings</source>
        <translation>Policy mappings</translation>
    </message>
    <message id="trivex-app-ext-purposes">
        <source>Purposes</source>
        <translation>Purposes</translation>
    </message>
    <message id="trivex-app-ext-qualified">
        <source>Statements of a qualified certificate</source>
        <translation>Statements of a qualified certificate</translation>
    </message>
    <message id="trivex-app-ext-reason">
        <source>Reason</source>
        <translation>Reason</translation>
    </message>
    <message id="trivex-app-ext-template">
        <source>Certificate template</source>
        <translation>Certificate template</translation>
    </message>
    <message id="trivex-app-ext-tls">
        <source>Required TLS extensions</source>
        <translation>Required TLS extensions</translation>
    </message>
    <message id="trivex-app-ext-transparency">
        <source>Certificate transparency</source>
        <translation>Certificate transparency</translation>
    </message>
    <message id="trivex-app-ext-wanted">
        <source>Wanted extensions</source>
        <translation>Wanted extensions</translation>
    </message>
    <message id="trivex-app-extensions">
        <source>Extensions</source>
        <translation>Extensions</translation>
    </message>
    <message id="trivex-app-field-add">
        <source>Add a field</source>
        <translation>Add a field</translation>
    </message>
    <message id="trivex-app-field-add-number">
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message id="trivex-app-field-business">
        <source>Kind of business</source>
        <translation>Kind of business</translation>
    </message>
    <message id="trivex-app-field-country">
        <source>Country code</source>
        <translation>Country code</translation>
    </message>
    <message id="trivex-app-field-country-flag">
        <source>Two capital Latin letters, as in RU.</source>
        <translation>Two capital Latin letters, as in RU.</translation>
    </message>
    <message id="trivex-app-field-department">
        <source>Department</source>
        <translation>Department</translation>
    </message>
    <message id="trivex-app-field-description">
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message id="trivex-app-field-dns">
        <source>Host name</source>
        <translation>Host name</translation>
    </message>
    <message id="trivex-app-field-dns-flag">
        <source>This is no host name. Write one as in www.example.org or *.example.org.</source>
        <translation>This is no host name. Write one as in www.example.org or *.example.org.</translation>
    </message>
    <message id="trivex-app-field-domain">
        <source>Part of a domain name</source>
        <translation>Part of a domain name</translation>
    </message>
    <message id="trivex-app-field-email">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="trivex-app-field-email-flag">
        <source>This is no e-mail address. Write one in Latin letters, as in name@example.org.</source>
        <translation>This is no e-mail address. Write one in Latin letters, as in name@example.org.</translation>
    </message>
    <message id="trivex-app-field-generation">
        <source>Generation (Jr., Sr.)</source>
        <translation>Generation (Jr., Sr.)</translation>
    </message>
    <message id="trivex-app-field-given-name">
        <source>First name and patronymic</source>
        <translation>First name and patronymic</translation>
    </message>
    <message id="trivex-app-field-initials">
        <source>Initials</source>
        <translation>Initials</translation>
    </message>
    <message id="trivex-app-field-inn">
        <source>INN</source>
        <translation>INN</translation>
    </message>
    <message id="trivex-app-field-innle">
        <source>INN of the organization</source>
        <translation>INN of the organization</translation>
    </message>
    <message id="trivex-app-field-ip">
        <source>IP address</source>
        <translation>IP address</translation>
    </message>
    <message id="trivex-app-field-ip-flag">
        <source>This is no IP address. Write one as in 192.0.2.1 or 2001:db8::1.</source>
        <translation>This is no IP address. Write one as in 192.0.2.1 or 2001:db8::1.</translation>
    </message>
    <message id="trivex-app-field-locality">
        <source>City</source>
        <translation>City</translation>
    </message>
    <message id="trivex-app-field-name">
        <source>Name (of the person or service)</source>
        <translation>Name (of the person or service)</translation>
    </message>
    <message id="trivex-app-field-number">
        <source>Number of the field</source>
        <translation>Number of the field</translation>
    </message>
    <message id="trivex-app-field-number-wrong">
        <source>This is no number of a field. Write one as in 1.2.3.4.</source>
        <translation>This is no number of a field. Write one as in 1.2.3.4.</translation>
    </message>
    <message id="trivex-app-field-ogrn">
        <source>OGRN or OGRNIP</source>
        <translation>OGRN or OGRNIP</translation>
    </message>
    <message id="trivex-app-field-ogrnip">
        <source>OGRNIP</source>
        <translation>OGRNIP</translation>
    </message>
    <message id="trivex-app-field-organization">
        <source>Organization</source>
        <translation>Organization</translation>
    </message>
    <message id="trivex-app-field-organization-id">
        <source>Number of the organization in a register</source>
        <translation>Number of the organization in a register</translation>
    </message>
    <message id="trivex-app-field-other">
        <source>Another, by its number</source>
        <translation>Another, by its number</translation>
    </message>
    <message id="trivex-app-field-postal-code">
        <source>Postal code</source>
        <translation>Postal code</translation>
    </message>
    <message id="trivex-app-field-printable-flag">
        <source>Only Latin letters, digits, blanks and the marks ' ( ) + , - . / : = ? are allowed here.</source>
        <translation>Only Latin letters, digits, blanks and the marks ' ( ) + , - . / : = ? are allowed here.</translation>
    </message>
    <message id="trivex-app-field-pseudonym">
        <source>Pseudonym</source>
        <translation>Pseudonym</translation>
    </message>
    <message id="trivex-app-field-qualifier">
        <source>Qualifier of the name</source>
        <translation>Qualifier of the name</translation>
    </message>
    <message id="trivex-app-field-serial">
        <source>Serial number of the holder</source>
        <translation>Serial number of the holder</translation>
    </message>
    <message id="trivex-app-field-snils">
        <source>SNILS</source>
        <translation>SNILS</translation>
    </message>
    <message id="trivex-app-field-state">
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message id="trivex-app-field-street">
        <source>Street and house</source>
        <translation>Street and house</translation>
    </message>
    <message id="trivex-app-field-surname">
        <source>Last name</source>
        <translation>Last name</translation>
    </message>
    <message id="trivex-app-field-telephone">
        <source>Telephone</source>
        <translation>Telephone</translation>
    </message>
    <message id="trivex-app-field-title">
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message id="trivex-app-field-uri">
        <source>Web address (URI)</source>
        <translation>Web address (URI)</translation>
    </message>
    <message id="trivex-app-field-uri-flag">
        <source>This is no whole web address. Write one in Latin letters, with https:// at its beginning.</source>
        <translation>This is no whole web address. Write one in Latin letters, with https:// at its beginning.</translation>
    </message>
    <message id="trivex-app-field-user">
        <source>User name</source>
        <translation>User name</translation>
    </message>
    <message id="trivex-app-file">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="trivex-app-file-digest">
        <source>Digest (SHA-256)</source>
        <translation>Digest (SHA-256)</translation>
    </message>
    <message id="trivex-app-file-folder">
        <source>Folder</source>
        <translation>Folder</translation>
    </message>
    <message id="trivex-app-file-name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="trivex-app-file-size">
        <source>Size</source>
        <translation>Size</translation>
    </message>
    <message id="trivex-app-file-type">
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message id="trivex-app-filter">
        <source>Filters</source>
        <translation>Filters</translation>
    </message>
    <message id="trivex-app-filter-all">
        <source>All files</source>
        <translation>All files</translation>
    </message>
    <message id="trivex-app-filter-certificates">
        <source>Certificates and bundles</source>
        <translation>Certificates and bundles</translation>
    </message>
    <message id="trivex-app-filter-hides" numerus="yes">
        <source>A filter hides %n rows</source>
        <translation>
            <numerusform>A filter hides %n row</numerusform>
            <numerusform>A filter hides %n rows</numerusform>
        </translation>
    </message>
    <message id="trivex-app-filter-keys">
        <source>With a private key</source>
        <translation>With a private key</translation>
    </message>
    <message id="trivex-app-filter-lift">
        <source>Show all</source>
        <translation>Show all</translation>
    </message>
    <message id="trivex-app-filter-on">
        <source>on</source>
        <translation>on</translation>
    </message>
    <message id="trivex-app-filter-token">
        <source>On the token “%1”</source>
        <translation>On the token “%1”</translation>
    </message>
    <message id="trivex-app-filtered">
        <source>Only these are shown: %1</source>
        <translation>Only these are shown: %1</translation>
    </message>
    <message id="trivex-app-fingerprints">
        <source>Fingerprints</source>
        <translation>Fingerprints</translation>
    </message>
    <message id="trivex-app-form-attached">
        <source>The same, with the document in it (CMS, .p7m)</source>
        <translation>The same, with the document in it (CMS, .p7m)</translation>
    </message>
    <message id="trivex-app-form-detached">
        <source>Signature that others can check (CMS, .p7s)</source>
        <translation>Signature that others can check (CMS, .p7s)</translation>
    </message>
    <message id="trivex-app-form-raw">
        <source>Bare RSA signature, for this program (.sig)</source>
        <translation>Bare RSA signature, for this program (.sig)</translation>
    </message>
    <message id="trivex-app-format-chain">
        <source>PEM with the issuers</source>
        <translation>PEM with the issuers</translation>
    </message>
    <message id="trivex-app-format-der">
        <source>DER, binary</source>
        <translation>DER, binary</translation>
    </message>
    <message id="trivex-app-format-p12">
        <source>Bundle with the private key</source>
        <translation>Bundle with the private key</translation>
    </message>
    <message id="trivex-app-format-p7b">
        <source>PKCS#7, all in one</source>
        <translation>P7B, all in one</translation>
    </message>
    <message id="trivex-app-format-p7b-chain">
        <source>PKCS#7 with the issuers</source>
        <translation>P7B with the issuers</translation>
    </message>
    <message id="trivex-app-format-pdf">
        <source>PDF document</source>
        <translation>PDF document</translation>
    </message>
    <message id="trivex-app-format-pem">
        <source>PEM, text</source>
        <translation>PEM, text</translation>
    </message>
    <message id="trivex-app-general">
        <source>General</source>
        <translation>General</translation>
    </message>
    <message id="trivex-app-generate">
        <source>Make the key</source>
        <translation>Make the key</translation>
    </message>
    <message id="trivex-app-generate-failed">
        <source>No key was made.</source>
        <translation>No key was made.</translation>
    </message>
    <message id="trivex-app-generated">
        <source>The key is on “%1”. Next: whom is the certificate for?</source>
        <translation>The key is on “%1”. Next: whom is the certificate for?</translation>
    </message>
    <message id="trivex-app-generating">
        <source>The token is making the key. This may take a minute.</source>
        <translation>The token is making the key. This may take a minute.</translation>
    </message>
    <message id="trivex-app-gost">
        <source>GOST R</source>
        <translation>GOST R</translation>
    </message>
    <message id="trivex-app-help">
        <source>Keyboard shortcuts</source>
        <translation>Keyboard shortcuts</translation>
    </message>
    <message id="trivex-app-help-import">
        <source>Open a file</source>
        <translation>Open a file</translation>
    </message>
    <message id="trivex-app-help-quit">
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message id="trivex-app-help-search">
        <source>Search in the list</source>
        <translation>Search in the list</translation>
    </message>
    <message id="trivex-app-help-several">
        <source>Select several rows</source>
        <translation>Select several rows</translation>
    </message>
    <message id="trivex-app-help-undo">
        <source>Bring back what was removed</source>
        <translation>Bring back what was removed</translation>
    </message>
    <message id="trivex-app-holder">
        <source>Holder</source>
        <translation>Holder</translation>
    </message>
    <message id="trivex-app-identified-by-passport">
        <source>by a biometric passport</source>
        <translation>by a biometric passport</translation>
    </message>
    <message id="trivex-app-identified-by-signature">
        <source>by a qualified signature</source>
        <translation>by a qualified signature</translation>
    </message>
    <message id="trivex-app-identified-by-state">
        <source>by the state's systems of identification</source>
        <translation>by the state's systems of identification</translation>
    </message>
    <message id="trivex-app-identified-in-person">
        <source>in person</source>
        <translation>in person</translation>
    </message>
    <message id="trivex-app-identifiers-note">
        <source>The numbers below go into the request. They are checked as you type.</source>
        <translation>The numbers below go into the request. They are checked as you type.</translation>
    </message>
    <message id="trivex-app-import">
        <source>Import…</source>
        <translation>Import…</translation>
    </message>
    <message id="trivex-app-import-accept">
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message id="trivex-app-import-failed">
        <source>Nothing was imported.</source>
        <translation>Nothing was imported.</translation>
    </message>
    <message id="trivex-app-import-leave-rest">
        <source>Leave the rest (%1)</source>
        <translation>Leave the rest (%1)</translation>
    </message>
    <message id="trivex-app-import-partly">
        <source>Only %1 of %2 were imported. What is still ticked is not; start again for it.</source>
        <translation>Only %1 of %2 were imported. What is still ticked is not; start again for it.</translation>
    </message>
    <message id="trivex-app-import-roots" numerus="yes">
        <source>%n of them are roots: every certificate that they issue will be trusted. Import them only if you know whose they are.</source>
        <translation>
            <numerusform>%n of them is a root: every certificate that it issues will be trusted. Import it only if you know whose it is.</numerusform>
            <numerusform>%n of them are roots: every certificate that they issue will be trusted. Import them only if you know whose they are.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-import-title">
        <source>Import a certificate or bundle</source>
        <translation>Import a certificate or bundle</translation>
    </message>
    <message id="trivex-app-import-to">
        <source>Import to</source>
        <translation>Import to</translation>
    </message>
    <message id="trivex-app-import-undone">
        <source>The import ended before everything was at its place.</source>
        <translation>The import ended before everything was at its place.</translation>
    </message>
    <message id="trivex-app-import-without-key">
        <source>Your files hold no private keys: only the certificate goes there. For the key, choose a token.</source>
        <translation>Your files hold no private keys: only the certificate goes there. For the key, choose a token.</translation>
    </message>
    <message id="trivex-app-imported">
        <source>“%1” is now in “%2”.</source>
        <translation>“%1” is now in “%2”.</translation>
    </message>
    <message id="trivex-app-imported-many" numerus="yes">
        <source>%n items are now in “%1”.</source>
        <translation>
            <numerusform>%n item is now in “%1”.</numerusform>
            <numerusform>%n items are now in “%1”.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-initialise">
        <source>Initialise token…</source>
        <translation>Initialise token…</translation>
    </message>
    <message id="trivex-app-initialise-confirm">
        <source>Delete all and initialise</source>
        <translation>Delete all and initialise</translation>
    </message>
    <message id="trivex-app-initialise-consent">
        <source>To agree, type the name of the token: %1</source>
        <translation>To agree, type the name of the token: %1</translation>
    </message>
    <message id="trivex-app-initialise-names">
        <source>A token gets another name only in this way.</source>
        <translation>A token gets another name only in this way.</translation>
    </message>
    <message id="trivex-app-initialise-title">
        <source>Initialise the token</source>
        <translation>Initialise the token</translation>
    </message>
    <message id="trivex-app-initialise-warning">
        <source>Everything on “%1” is deleted for good.</source>
        <translation>Everything on “%1” is deleted for good.</translation>
    </message>
    <message id="trivex-app-initialised">
        <source>“%1” is ready: empty, with its new PIN.</source>
        <translation>“%1” is ready: empty, with its new PIN.</translation>
    </message>
    <message id="trivex-app-issuer">
        <source>Issuer</source>
        <translation>Issuer</translation>
    </message>
    <message id="trivex-app-item-answer">
        <source>Answer about revocation (OCSP)</source>
        <translation>Answer about revocation (OCSP)</translation>
    </message>
    <message id="trivex-app-item-attributes">
        <source>Attribute certificate</source>
        <translation>Attribute certificate</translation>
    </message>
    <message id="trivex-app-item-encrypted">
        <source>Encrypted message</source>
        <translation>Encrypted message</translation>
    </message>
    <message id="trivex-app-item-foreign">
        <source>Can't be imported</source>
        <translation>Can't be imported</translation>
    </message>
    <message id="trivex-app-item-list">
        <source>List of revoked certificates</source>
        <translation>List of revoked certificates</translation>
    </message>
    <message id="trivex-app-item-private-key">
        <source>Private key</source>
        <translation>Private key</translation>
    </message>
    <message id="trivex-app-item-protected">
        <source>Protected by a password</source>
        <translation>Protected by a password</translation>
    </message>
    <message id="trivex-app-item-public-key">
        <source>Public key</source>
        <translation>Public key</translation>
    </message>
    <message id="trivex-app-item-request">
        <source>Certificate request</source>
        <translation>Certificate request</translation>
    </message>
    <message id="trivex-app-item-ssh-key">
        <source>Private key of SSH</source>
        <translation>Private key of SSH</translation>
    </message>
    <message id="trivex-app-item-unnamed">
        <source>Without a name</source>
        <translation>Without a name</translation>
    </message>
    <message id="trivex-app-item-with-key">
        <source>With its private key · %1</source>
        <translation>With its private key · %1</translation>
    </message>
    <message id="trivex-app-items" numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
    <message id="trivex-app-items-chosen">
        <source>Selected: %1 of %2</source>
        <translation>Selected: %1 of %2</translation>
    </message>
    <message id="trivex-app-items-of-file">
        <source>What is in the file</source>
        <translation>What is in the file</translation>
    </message>
    <message id="trivex-app-key-bare">
        <source>%1, without a certificate</source>
        <translation>%1, without a certificate</translation>
    </message>
    <message id="trivex-app-key-brought">
        <source>made elsewhere and written to the token</source>
        <translation>made elsewhere and written to the token</translation>
    </message>
    <message id="trivex-app-key-bytes">
        <source>Key</source>
        <translation>Key</translation>
    </message>
    <message id="trivex-app-key-certified">
        <source>%1, has a certificate</source>
        <translation>%1, has a certificate</translation>
    </message>
    <message id="trivex-app-key-choice">
        <source>Key</source>
        <translation>Key</translation>
    </message>
    <message id="trivex-app-key-cipher">
        <source>Cipher</source>
        <translation>Cipher</translation>
    </message>
    <message id="trivex-app-key-curve">
        <source>Curve</source>
        <translation>Curve</translation>
    </message>
    <message id="trivex-app-key-decrypts">
        <source>decrypt</source>
        <translation>decrypt</translation>
    </message>
    <message id="trivex-app-key-derives">
        <source>agree on keys</source>
        <translation>agree on keys</translation>
    </message>
    <message id="trivex-app-key-digest">
        <source>Digest</source>
        <translation>Digest</translation>
    </message>
    <message id="trivex-app-key-exponent">
        <source>Exponent</source>
        <translation>Exponent</translation>
    </message>
    <message id="trivex-app-key-group">
        <source>Key</source>
        <translation>Key</translation>
    </message>
    <message id="trivex-app-key-id-issuer">
        <source>Its issuer</source>
        <translation>Its issuer</translation>
    </message>
    <message id="trivex-app-key-kind" numerus="yes">
        <source>%1, %n bits</source>
        <translation>
            <numerusform>%1, %n bit</numerusform>
            <numerusform>%1, %n bits</numerusform>
        </translation>
    </message>
    <message id="trivex-app-key-kind-and-size">
        <source>Kind and size</source>
        <translation>Kind and size</translation>
    </message>
    <message id="trivex-app-key-made-here">
        <source>made on this token</source>
        <translation>made on this token</translation>
    </message>
    <message id="trivex-app-key-make-request">
        <source>Make a request…</source>
        <translation>Make a request…</translation>
    </message>
    <message id="trivex-app-key-modulus">
        <source>Modulus</source>
        <translation>Modulus</translation>
    </message>
    <message id="trivex-app-key-name">
        <source>Key name</source>
        <translation>Key name</translation>
    </message>
    <message id="trivex-app-key-name-hint">
        <source>Your own name for it on the token</source>
        <translation>Your own name for it on the token</translation>
    </message>
    <message id="trivex-app-key-nameless">
        <source>Key without a name</source>
        <translation>Key without a name</translation>
    </message>
    <message id="trivex-app-key-new">
        <source>A new key</source>
        <translation>A new key</translation>
    </message>
    <message id="trivex-app-key-no-request">
        <source>No request can be made for this key: the token does not show its public half, or the key may not sign.</source>
        <translation>No request can be made for this key: the token does not show its public half, or the key may not sign.</translation>
    </message>
    <message id="trivex-app-key-other-kind">
        <source>Another kind</source>
        <translation>Another kind</translation>
    </message>
    <message id="trivex-app-key-parameters">
        <source>Parameters</source>
        <translation>Parameters</translation>
    </message>
    <message id="trivex-app-key-presumed">
        <source>Whether the token has the key of this certificate shows after the PIN is entered.</source>
        <translation>Whether the token has the key of this certificate shows after the PIN is entered.</translation>
    </message>
    <message id="trivex-app-key-removed">
        <source>The key is removed.</source>
        <translation>The key is removed.</translation>
    </message>
    <message id="trivex-app-key-row-id">
        <source>Id on the token</source>
        <translation>Id on the token</translation>
    </message>
    <message id="trivex-app-key-row-kind">
        <source>Kind</source>
        <translation>Kind</translation>
    </message>
    <message id="trivex-app-key-row-name">
        <source>Key name</source>
        <translation>Key name</translation>
    </message>
    <message id="trivex-app-key-row-origin">
        <source>Origin</source>
        <translation>Origin</translation>
    </message>
    <message id="trivex-app-key-row-request">
        <source>Waits for the certificate of</source>
        <translation>Waits for the certificate of</translation>
    </message>
    <message id="trivex-app-key-row-token">
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message id="trivex-app-key-row-uses">
        <source>May</source>
        <translation>May</translation>
    </message>
    <message id="trivex-app-key-set">
        <source>%1, parameter set %2 (%3)</source>
        <translation>%1, parameter set %2 (%3)</translation>
    </message>
    <message id="trivex-app-key-signs">
        <source>sign</source>
        <translation>sign</translation>
    </message>
    <message id="trivex-app-key-unnamed">
        <source>Key without a name</source>
        <translation>Key without a name</translation>
    </message>
    <message id="trivex-app-key-unseen">
        <source>Key not seen yet</source>
        <translation>Key not seen yet</translation>
    </message>
    <message id="trivex-app-key-unwraps">
        <source>unwrap keys</source>
        <translation>unwrap keys</translation>
    </message>
    <message id="trivex-app-key-uses-nothing">
        <source>nothing</source>
        <translation>nothing</translation>
    </message>
    <message id="trivex-app-key-uses-unknown">
        <source>is known after the PIN</source>
        <translation>is known after the PIN</translation>
    </message>
    <message id="trivex-app-key-waits">
        <source>This key waits for the certificate of the request “%1”.</source>
        <translation>This key waits for the certificate of the request “%1”.</translation>
    </message>
    <message id="trivex-app-keys-are-no-files">
        <source>A key without a certificate can't be saved as a file. Select certificates or requests too.</source>
        <translation>A key without a certificate can't be saved as a file. Select certificates or requests too.</translation>
    </message>
    <message id="trivex-app-keys-bare">
        <source>Keys without certificate</source>
        <translation>Keys without certificate</translation>
    </message>
    <message id="trivex-app-keys-hidden">
        <source>There may be more keys, which show only after the PIN.</source>
        <translation>There may be more keys, which show only after the PIN.</translation>
    </message>
    <message id="trivex-app-keys-show">
        <source>Show the keys…</source>
        <translation>Show the keys…</translation>
    </message>
    <message id="trivex-app-kind-broken" numerus="yes">
        <source>%n parts of the file are damaged and are left out.</source>
        <translation>
            <numerusform>%n part of the file is damaged and is left out.</numerusform>
            <numerusform>%n parts of the file are damaged and are left out.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-kind-curve">
        <source>Elliptic curve %1</source>
        <translation>Elliptic curve %1</translation>
    </message>
    <message id="trivex-app-kind-encrypted">
        <source>This is an encrypted message. It can't be opened here; its recipient opens it in the program for mail or documents.</source>
        <translation>This is an encrypted message. It can't be opened here; its recipient opens it in the program for mail or documents.</translation>
    </message>
    <message id="trivex-app-kind-foreign">
        <source>This file holds no certificate of a key, so there is nothing to import. Choose another one.</source>
        <translation>This file holds no certificate of a key, so there is nothing to import. Choose another one.</translation>
    </message>
    <message id="trivex-app-kind-gost">
        <source>GOST R 34.10-2012, %1 bits</source>
        <translation>GOST R 34.10-2012, %1 bits</translation>
    </message>
    <message id="trivex-app-kind-key">
        <source>This is a private key without a certificate. Import a bundle (.p12, .pfx) that holds both.</source>
        <translation>This is a private key without a certificate. Import a bundle (.p12, .pfx) that holds both.</translation>
    </message>
    <message id="trivex-app-kind-list">
        <source>This is a list of revoked certificates. Once it is among your files, it counts whenever a path is checked.</source>
        <translation>This is a list of revoked certificates. Once it is among your files, it counts whenever a path is checked.</translation>
    </message>
    <message id="trivex-app-kind-message">
        <source>This is a signed message. The certificates that it carries are below.</source>
        <translation>This is a signed message. The certificates that it carries are below.</translation>
    </message>
    <message id="trivex-app-kind-other">
        <source>This file holds no certificates, keys or requests. Choose another one.</source>
        <translation>This file holds no certificates, keys or requests. Choose another one.</translation>
    </message>
    <message id="trivex-app-kind-public-key">
        <source>This is a public key. It can be read here; there is nothing to import.</source>
        <translation>This is a public key. It can be read here; there is nothing to import.</translation>
    </message>
    <message id="trivex-app-kind-request">
        <source>This is a certificate request. Send it to a certification authority; import the certificate that comes back. Imported, it is listed among your requests.</source>
        <translation>This is a certificate request. Send it to a certification authority; import the certificate that comes back. Imported, it is listed among your requests.</translation>
    </message>
    <message id="trivex-app-kind-rsa">
        <source>RSA, %1 bits</source>
        <translation>RSA, %1 bits</translation>
    </message>
    <message id="trivex-app-kind-signature">
        <source>This file is a signature. Open it together with its document, under “Sign and verify”.</source>
        <translation>This file is a signature. Open it together with its document, under “Sign and verify”.</translation>
    </message>
    <message id="trivex-app-kind-unread-keys" numerus="yes">
        <source>%n more private keys were not looked at: a file may hold 20.</source>
        <translation>
            <numerusform>%n more private key was not looked at: a file may hold 20.</numerusform>
            <numerusform>%n more private keys were not looked at: a file may hold 20.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-leave-alone">
        <source>The certificate of the key is not in the file.</source>
        <translation>The certificate of the key is not in the file.</translation>
    </message>
    <message id="trivex-app-leave-editing-confirm">
        <source>Discard</source>
        <translation>Discard</translation>
    </message>
    <message id="trivex-app-leave-editing-stay">
        <source>Keep editing</source>
        <translation>Keep editing</translation>
    </message>
    <message id="trivex-app-leave-editing-text">
        <source>What you changed in the request is not saved.</source>
        <translation>What you changed in the request is not saved.</translation>
    </message>
    <message id="trivex-app-leave-editing-title">
        <source>Discard the changes?</source>
        <translation>Discard the changes?</translation>
    </message>
    <message id="trivex-app-leave-locked">
        <source>The private key is encrypted in the file.</source>
        <translation>The private key is encrypted in the file.</translation>
    </message>
    <message id="trivex-app-leave-no-key">
        <source>There is no private key.</source>
        <translation>There is no private key.</translation>
    </message>
    <message id="trivex-app-list-count">
        <source>Revoked certificates</source>
        <translation>Revoked certificates</translation>
    </message>
    <message id="trivex-app-list-entries">
        <source>Serial numbers, and when</source>
        <translation>Serial numbers, and when</translation>
    </message>
    <message id="trivex-app-list-made">
        <source>Issued on</source>
        <translation>Issued on</translation>
    </message>
    <message id="trivex-app-list-next">
        <source>Next update by</source>
        <translation>Next update by</translation>
    </message>
    <message id="trivex-app-list-number-of">
        <source>Number</source>
        <translation>Number</translation>
    </message>
    <message id="trivex-app-lists-changed">
        <source>The file of this list was moved or changed by another program, so it was left alone. Look at the lists again.</source>
        <translation>The file of this list was moved or changed by another program, so it was left alone. Look at the lists again.</translation>
    </message>
    <message id="trivex-app-lists-count" numerus="yes">
        <source>%n lists of revoked certificates are among your files.</source>
        <translation>
            <numerusform>One list of revoked certificates is among your files.</numerusform>
            <numerusform>%n lists of revoked certificates are among your files.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-lists-due">
        <source>The next one is due on %1.</source>
        <translation>The next one is due on %1.</translation>
    </message>
    <message id="trivex-app-lists-full">
        <source>The lists of revoked certificates among your files may have %1 MB together, and this one would be too much. Remove those that you no longer need, then import what is still ticked.</source>
        <translation>The lists of revoked certificates among your files may have %1 MB together, and this one would be too much. Remove those that you no longer need, then import what is still ticked.</translation>
    </message>
    <message id="trivex-app-lists-no-due">
        <source>The list does not say when the next one is due.</source>
        <translation>The list does not say when the next one is due.</translation>
    </message>
    <message id="trivex-app-lists-none">
        <source>There are none among your files. Import a list like any other file.</source>
        <translation>There are none among your files. Import a list like any other file.</translation>
    </message>
    <message id="trivex-app-lists-really">
        <source>Remove it now</source>
        <translation>Remove it now</translation>
    </message>
    <message id="trivex-app-lists-shared">
        <source>Its file holds other things too. Remove it from the folder by hand.</source>
        <translation>Its file holds other things too. Remove it from the folder by hand.</translation>
    </message>
    <message id="trivex-app-lists-show">
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message id="trivex-app-lists-text">
        <source>They lie among your files and count whenever a path is checked, as far as their issuer has signed them.</source>
        <translation>They lie among your files and count whenever a path is checked, as far as their issuer has signed them.</translation>
    </message>
    <message id="trivex-app-lists-title">
        <source>Lists of revoked certificates</source>
        <translation>Lists of revoked certificates</translation>
    </message>
    <message id="trivex-app-loading">
        <source>Reading the stores…</source>
        <translation>Reading the stores…</translation>
    </message>
    <message id="trivex-app-manual">
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
    <message id="trivex-app-manual-section">
        <source>Section of the manual</source>
        <translation>Section of the manual</translation>
    </message>
    <message id="trivex-app-menu">
        <source>Categories</source>
        <translation>Categories</translation>
    </message>
    <message id="trivex-app-more-rows">
        <source>More of them</source>
        <translation>More of them</translation>
    </message>
    <message id="trivex-app-name-address">
        <source>IP address</source>
        <translation>IP address</translation>
    </message>
    <message id="trivex-app-name-directory">
        <source>Directory name</source>
        <translation>Directory name</translation>
    </message>
    <message id="trivex-app-name-edi">
        <source>EDI party</source>
        <translation>EDI party</translation>
    </message>
    <message id="trivex-app-name-mail">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="trivex-app-name-other">
        <source>Other name</source>
        <translation>Other name</translation>
    </message>
    <message id="trivex-app-name-principal">
        <source>User principal name</source>
        <translation>User principal name</translation>
    </message>
    <message id="trivex-app-name-registered">
        <source>Registered identifier</source>
        <translation>Registered identifier</translation>
    </message>
    <message id="trivex-app-name-service">
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message id="trivex-app-name-x400">
        <source>X.400 address</source>
        <translation>X.400 address</translation>
    </message>
    <message id="trivex-app-name-xmpp">
        <source>XMPP address</source>
        <translation>XMPP address</translation>
    </message>
    <message id="trivex-app-names-excluded">
        <source>Excluded</source>
        <translation>Excluded</translation>
    </message>
    <message id="trivex-app-names-permitted">
        <source>Permitted</source>
        <translation>Permitted</translation>
    </message>
    <message id="trivex-app-netscape-client">
        <source>client of a server</source>
        <translation>client of a server</translation>
    </message>
    <message id="trivex-app-netscape-code">
        <source>signing programs</source>
        <translation>signing programs</translation>
    </message>
    <message id="trivex-app-netscape-code-authority">
        <source>authority for signing programs</source>
        <translation>authority for signing programs</translation>
    </message>
    <message id="trivex-app-netscape-mail">
        <source>e-mail</source>
        <translation>e-mail</translation>
    </message>
    <message id="trivex-app-netscape-mail-authority">
        <source>authority for e-mail</source>
        <translation>authority for e-mail</translation>
    </message>
    <message id="trivex-app-netscape-reserved">
        <source>reserved</source>
        <translation>reserved</translation>
    </message>
    <message id="trivex-app-netscape-server">
        <source>web server</source>
        <translation>web server</translation>
    </message>
    <message id="trivex-app-netscape-server-authority">
        <source>authority for servers and clients</source>
        <translation>authority for servers and clients</translation>
    </message>
    <message id="trivex-app-new-officer-pin">
        <source>New administrator PIN</source>
        <translation>New administrator PIN</translation>
    </message>
    <message id="trivex-app-new-pin">
        <source>New PIN</source>
        <translation>New PIN</translation>
    </message>
    <message id="trivex-app-new-pin-again">
        <source>New PIN once more</source>
        <translation>New PIN once more</translation>
    </message>
    <message id="trivex-app-new-request">
        <source>New request</source>
        <translation>New request</translation>
    </message>
    <message id="trivex-app-new-token">
        <source>Make a token of your own…</source>
        <translation>Make a token of your own…</translation>
    </message>
    <message id="trivex-app-new-token-confirm">
        <source>Make the token</source>
        <translation>Make the token</translation>
    </message>
    <message id="trivex-app-new-token-failed">
        <source>The token “%1” was not made.</source>
        <translation>The token “%1” was not made.</translation>
    </message>
    <message id="trivex-app-new-token-made">
        <source>“%1” is ready for keys and certificates.</source>
        <translation>“%1” is ready for keys and certificates.</translation>
    </message>
    <message id="trivex-app-new-token-name">
        <source>My token</source>
        <translation>My token</translation>
    </message>
    <message id="trivex-app-new-token-officer">
        <source>The administrator PIN is the same at first. Change it in the menu of the token.</source>
        <translation>The administrator PIN is the same at first. Change it in the menu of the token.</translation>
    </message>
    <message id="trivex-app-new-token-text">
        <source>A private token keeps keys in a file of your own, protected by its PIN. Nobody can bring back a forgotten PIN.</source>
        <translation>A private token keeps keys in a file of your own, protected by its PIN. Nobody can bring back a forgotten PIN.</translation>
    </message>
    <message id="trivex-app-new-token-title">
        <source>Make a token of your own</source>
        <translation>Make a token of your own</translation>
    </message>
    <message id="trivex-app-no">
        <source>no</source>
        <translation>no</translation>
    </message>
    <message id="trivex-app-no-key">
        <source>There is no key to sign with. Insert a token or import a bundle.</source>
        <translation>There is no key to sign with. Insert a token or import a bundle.</translation>
    </message>
    <message id="trivex-app-no-token">
        <source>No token is connected.</source>
        <translation>No token is connected.</translation>
    </message>
    <message id="trivex-app-nosignature">
        <source>There is no signature file.</source>
        <translation>There is no signature file.</translation>
    </message>
    <message id="trivex-app-not-found">
        <source>Nothing found</source>
        <translation>Nothing found</translation>
    </message>
    <message id="trivex-app-not-found-text">
        <source>The search looks at everything that the details show: names, issuers, numbers, addresses and fingerprints.</source>
        <translation>The search looks at everything that the details show: names, issuers, numbers, addresses and fingerprints.</translation>
    </message>
    <message id="trivex-app-not-yet-text">
        <source>It is not valid before %1. Whoever checks the signature may refuse it.</source>
        <translation>It is not valid before %1. Whoever checks the signature may refuse it.</translation>
    </message>
    <message id="trivex-app-nothing">
        <source>nothing</source>
        <translation>nothing</translation>
    </message>
    <message id="trivex-app-officer-pin">
        <source>Administrator PIN</source>
        <translation>Administrator PIN</translation>
    </message>
    <message id="trivex-app-ok">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="trivex-app-old-officer-pin">
        <source>Old administrator PIN</source>
        <translation>Old administrator PIN</translation>
    </message>
    <message id="trivex-app-old-pin">
        <source>Old PIN</source>
        <translation>Old PIN</translation>
    </message>
    <message id="trivex-app-one-document">
        <source>One document at a time: the others were not opened.</source>
        <translation>One document at a time: the others were not opened.</translation>
    </message>
    <message id="trivex-app-only-rsa-keys">
        <source>Only RSA keys can make this signature. Your other keys are not listed.</source>
        <translation>Only RSA keys can make this signature. Your other keys are not listed.</translation>
    </message>
    <message id="trivex-app-open-file">
        <source>Open a file</source>
        <translation>Open a file</translation>
    </message>
    <message id="trivex-app-open-folder">
        <source>Open the folder</source>
        <translation>Open the folder</translation>
    </message>
    <message id="trivex-app-other-names">
        <source>Other names that the certificate is for: servers, mailboxes, addresses.</source>
        <translation>Other names that the certificate is for: servers, mailboxes, addresses.</translation>
    </message>
    <message id="trivex-app-other-names-add">
        <source>Add another name</source>
        <translation>Add another name</translation>
    </message>
    <message id="trivex-app-other-signature">
        <source>Another signature file…</source>
        <translation>Another signature file…</translation>
    </message>
    <message id="trivex-app-passwords-differ">
        <source>The two passwords differ.</source>
        <translation>The two passwords differ.</translation>
    </message>
    <message id="trivex-app-path-missing">
        <source>There is nothing at this path. Check it, or choose from the list.</source>
        <translation>There is nothing at this path. Check it, or choose from the list.</translation>
    </message>
    <message id="trivex-app-pin">
        <source>PIN</source>
        <translation>PIN</translation>
    </message>
    <message id="trivex-app-pin-changed">
        <source>The PIN of “%1” is changed.</source>
        <translation>The PIN of “%1” is changed.</translation>
    </message>
    <message id="trivex-app-pin-consent">
        <source>I know that a wrong PIN locks the token</source>
        <translation>I know that a wrong PIN locks the token</translation>
    </message>
    <message id="trivex-app-pin-final">
        <source>This is the last try: a wrong PIN locks the token.</source>
        <translation>This is the last try: a wrong PIN locks the token.</translation>
    </message>
    <message id="trivex-app-pin-length-wrong">
        <source>This length does not fit.</source>
        <translation>This length does not fit.</translation>
    </message>
    <message id="trivex-app-pin-locked">
        <source>The PIN is locked. Only the token's administrator can unlock it.</source>
        <translation>The PIN is locked. Only the token's administrator can unlock it.</translation>
    </message>
    <message id="trivex-app-pin-low">
        <source>A wrong PIN was given before. After several wrong ones the token locks itself.</source>
        <translation>A wrong PIN was given before. After several wrong ones the token locks itself.</translation>
    </message>
    <message id="trivex-app-pin-of">
        <source>PIN of “%1”</source>
        <translation>PIN of “%1”</translation>
    </message>
    <message id="trivex-app-pin-pad-text">
        <source>Type the PINs at the reader: it asks for them when you go on.</source>
        <translation>Type the PINs at the reader: it asks for them when you go on.</translation>
    </message>
    <message id="trivex-app-pin-replaced">
        <source>The question before is over. This is another one: type the PIN of the token named below.</source>
        <translation>The question before is over. This is another one: type the PIN of the token named below.</translation>
    </message>
    <message id="trivex-app-pin-title">
        <source>The token asks for its PIN</source>
        <translation>The token asks for its PIN</translation>
    </message>
    <message id="trivex-app-pin-to-be-changed">
        <source>The PIN was given out with the token and has to be changed first.</source>
        <translation>The PIN was given out with the token and has to be changed first.</translation>
    </message>
    <message id="trivex-app-pin-was-set">
        <source>“%1” has its new PIN.</source>
        <translation>“%1” has its new PIN.</translation>
    </message>
    <message id="trivex-app-pin-wrong">
        <source>That PIN was not right. Type it again, or cancel.</source>
        <translation>That PIN was not right. Type it again, or cancel.</translation>
    </message>
    <message id="trivex-app-pins-differ">
        <source>The two PINs differ.</source>
        <translation>The two PINs differ.</translation>
    </message>
    <message id="trivex-app-point-issuer">
        <source>Issuer of the list</source>
        <translation>Issuer of the list</translation>
    </message>
    <message id="trivex-app-point-reasons">
        <source>Only for</source>
        <translation>Only for</translation>
    </message>
    <message id="trivex-app-point-relative">
        <source>Name below the issuer's</source>
        <translation>Name below the issuer's</translation>
    </message>
    <message id="trivex-app-policy-any">
        <source>Any policy</source>
        <translation>Any policy</translation>
    </message>
    <message id="trivex-app-policy-domain">
        <source>Domain validated</source>
        <translation>Domain validated</translation>
    </message>
    <message id="trivex-app-policy-extended">
        <source>Extended validation</source>
        <translation>Extended validation</translation>
    </message>
    <message id="trivex-app-policy-ka1">
        <source>Signature tool of class KA1</source>
        <translation>Signature tool of class KA1</translation>
    </message>
    <message id="trivex-app-policy-ks1">
        <source>Signature tool of class KS1</source>
        <translation>Signature tool of class KS1</translation>
    </message>
    <message id="trivex-app-policy-ks2">
        <source>Signature tool of class KS2</source>
        <translation>Signature tool of class KS2</translation>
    </message>
    <message id="trivex-app-policy-ks3">
        <source>Signature tool of class KS3</source>
        <translation>Signature tool of class KS3</translation>
    </message>
    <message id="trivex-app-policy-kv1">
        <source>Signature tool of class KV1</source>
        <translation>Signature tool of class KV1</translation>
    </message>
    <message id="trivex-app-policy-kv2">
        <source>Signature tool of class KV2</source>
        <translation>Signature tool of class KV2</translation>
    </message>
    <message id="trivex-app-policy-no-mappings">
        <source>Certificates to skip before mappings count no more</source>
        <translation>Certificates to skip before mappings count no more</translation>
    </message>
    <message id="trivex-app-policy-notice">
        <source>Notice</source>
        <translation>Notice</translation>
    </message>
    <message id="trivex-app-policy-organization">
        <source>Organization validated</source>
        <translation>Organization validated</translation>
    </message>
    <message id="trivex-app-policy-person">
        <source>Person validated</source>
        <translation>Person validated</translation>
    </message>
    <message id="trivex-app-policy-reference">
        <source>Statement of</source>
        <translation>Statement of</translation>
    </message>
    <message id="trivex-app-policy-required">
        <source>Certificates to skip before a policy is required</source>
        <translation>Certificates to skip before a policy is required</translation>
    </message>
    <message id="trivex-app-policy-rules">
        <source>Rules</source>
        <translation>Rules</translation>
    </message>
    <message id="trivex-app-preview">
        <source>Preview of the picture</source>
        <translation>Preview of the picture</translation>
    </message>
    <message id="trivex-app-print">
        <source>Print</source>
        <translation>Print</translation>
    </message>
    <message id="trivex-app-print-busy">
        <source>Wait until the document before is ready.</source>
        <translation>Wait until the document before is ready.</translation>
    </message>
    <message id="trivex-app-print-failed">
        <source>The document could not be opened.</source>
        <translation>The document could not be opened.</translation>
    </message>
    <message id="trivex-app-print-failed-advice">
        <source>Save it as PDF and open the file with a program that prints.</source>
        <translation>Save it as PDF and open the file with a program that prints.</translation>
    </message>
    <message id="trivex-app-profile">
        <source>Kind of request</source>
        <translation>Kind of request</translation>
    </message>
    <message id="trivex-app-profile-company">
        <source>Company (Russia)</source>
        <translation>Company (Russia)</translation>
    </message>
    <message id="trivex-app-profile-exists">
        <source>There is a kind “%1” already. Replace it, or type another name.</source>
        <translation>There is a kind “%1” already. Replace it, or type another name.</translation>
    </message>
    <message id="trivex-app-profile-mail">
        <source>Protected e-mail</source>
        <translation>Protected e-mail</translation>
    </message>
    <message id="trivex-app-profile-name">
        <source>Name of the kind</source>
        <translation>Name of the kind</translation>
    </message>
    <message id="trivex-app-profile-name-hint">
        <source>Fields and usages are kept as they are filled in now.</source>
        <translation>Fields and usages are kept as they are filled in now.</translation>
    </message>
    <message id="trivex-app-profile-not-removed">
        <source>The kind of request was not removed.</source>
        <translation>The kind of request was not removed.</translation>
    </message>
    <message id="trivex-app-profile-not-removed-advice">
        <source>Check that your settings folder can be written, then remove it again.</source>
        <translation>Check that your settings folder can be written, then remove it again.</translation>
    </message>
    <message id="trivex-app-profile-person">
        <source>Person (Russia)</source>
        <translation>Person (Russia)</translation>
    </message>
    <message id="trivex-app-profile-remove">
        <source>Remove this kind</source>
        <translation>Remove this kind</translation>
    </message>
    <message id="trivex-app-profile-save">
        <source>Save as your own kind</source>
        <translation>Save as your own kind</translation>
    </message>
    <message id="trivex-app-profile-save-title">
        <source>Save this kind of request</source>
        <translation>Save this kind of request</translation>
    </message>
    <message id="trivex-app-profile-server">
        <source>Web server</source>
        <translation>Web server</translation>
    </message>
    <message id="trivex-app-profile-simple">
        <source>Simple</source>
        <translation>Simple</translation>
    </message>
    <message id="trivex-app-profile-too-large">
        <source>This kind is too large to be read again. Remove some of its values.</source>
        <translation>This kind is too large to be read again. Remove some of its values.</translation>
    </message>
    <message id="trivex-app-profile-unread">
        <source>This kind of request could not be read.</source>
        <translation>This kind of request could not be read.</translation>
    </message>
    <message id="trivex-app-profile-unread-advice">
        <source>Its file is damaged or gone. Select another kind.</source>
        <translation>Its file is damaged or gone. Select another kind.</translation>
    </message>
    <message id="trivex-app-profile-unsaved">
        <source>The kind was not saved. Enter another name, or check that there is room on the disk.</source>
        <translation>The kind was not saved. Enter another name, or check that there is room on the disk.</translation>
    </message>
    <message id="trivex-app-purpose-decrypt">
        <source>to decrypt with a key on it</source>
        <translation>to decrypt with a key on it</translation>
    </message>
    <message id="trivex-app-purpose-export">
        <source>to copy a private key from it</source>
        <translation>to copy a private key from it</translation>
    </message>
    <message id="trivex-app-purpose-generate">
        <source>to make a key on it</source>
        <translation>to make a key on it</translation>
    </message>
    <message id="trivex-app-purpose-look">
        <source>to show the keys on it</source>
        <translation>to show the keys on it</translation>
    </message>
    <message id="trivex-app-purpose-remove">
        <source>to remove something from it</source>
        <translation>to remove something from it</translation>
    </message>
    <message id="trivex-app-purpose-sign">
        <source>to sign with a key on it</source>
        <translation>to sign with a key on it</translation>
    </message>
    <message id="trivex-app-purpose-write">
        <source>to write to it</source>
        <translation>to write to it</translation>
    </message>
    <message id="trivex-app-purposes">
        <source>What the certificate is for</source>
        <translation>What the certificate is for</translation>
    </message>
    <message id="trivex-app-qualified-device">
        <source>The key is on a qualified device</source>
        <translation>The key is on a qualified device</translation>
    </message>
    <message id="trivex-app-qualified-eu">
        <source>Qualified certificate of the EU</source>
        <translation>Qualified certificate of the EU</translation>
    </message>
    <message id="trivex-app-qualified-limit">
        <source>Limit of a transaction</source>
        <translation>Limit of a transaction</translation>
    </message>
    <message id="trivex-app-qualified-retention">
        <source>Years that documents are kept</source>
        <translation>Years that documents are kept</translation>
    </message>
    <message id="trivex-app-qualified-statements">
        <source>Statements of the authority</source>
        <translation>Statements of the authority</translation>
    </message>
    <message id="trivex-app-qualified-type">
        <source>What it is for</source>
        <translation>What it is for</translation>
    </message>
    <message id="trivex-app-quit-cancel">
        <source>Keep working</source>
        <translation>Keep working</translation>
    </message>
    <message id="trivex-app-quit-changes">
        <source>The changes of a request are not saved.</source>
        <translation>The changes of a request are not saved.</translation>
    </message>
    <message id="trivex-app-quit-confirm">
        <source>Stop and close</source>
        <translation>Stop and close</translation>
    </message>
    <message id="trivex-app-quit-edit">
        <source>An edited request is being signed and saved.</source>
        <translation>An edited request is being signed and saved.</translation>
    </message>
    <message id="trivex-app-quit-export">
        <source>Files are being exported.</source>
        <translation>Files are being exported.</translation>
    </message>
    <message id="trivex-app-quit-filled">
        <source>A new request is filled in, but not made yet.</source>
        <translation>A new request is filled in, but not made yet.</translation>
    </message>
    <message id="trivex-app-quit-import">
        <source>An import is being written.</source>
        <translation>An import is being written.</translation>
    </message>
    <message id="trivex-app-quit-removal">
        <source>Certificates or keys are being removed.</source>
        <translation>Certificates or keys are being removed.</translation>
    </message>
    <message id="trivex-app-quit-request">
        <source>A key or a request is being made.</source>
        <translation>A key or a request is being made.</translation>
    </message>
    <message id="trivex-app-quit-signing">
        <source>A document is being signed, or a signature checked.</source>
        <translation>A document is being signed, or a signature checked.</translation>
    </message>
    <message id="trivex-app-quit-text">
        <source>If the window closes now, work stops where it is, and what was typed is lost.</source>
        <translation>If the window closes now, work stops where it is, and what was typed is lost.</translation>
    </message>
    <message id="trivex-app-quit-title">
        <source>Close the window?</source>
        <translation>Close the window?</translation>
    </message>
    <message id="trivex-app-quit-undo">
        <source>What was removed is being brought back.</source>
        <translation>What was removed is being brought back.</translation>
    </message>
    <message id="trivex-app-read-damaged">
        <source>What this file holds is damaged. Ask for it to be sent again.</source>
        <translation>What this file holds is damaged. Ask for it to be sent again.</translation>
    </message>
    <message id="trivex-app-read-denied">
        <source>You may not read this file. Ask its owner for access.</source>
        <translation>You may not read this file. Ask its owner for access.</translation>
    </message>
    <message id="trivex-app-read-empty">
        <source>The file is empty. Ask for it to be sent again.</source>
        <translation>The file is empty. Ask for it to be sent again.</translation>
    </message>
    <message id="trivex-app-read-failed">
        <source>The file could not be read. Check the disk that it is on, or choose another file.</source>
        <translation>The file could not be read. Check the disk that it is on, or choose another file.</translation>
    </message>
    <message id="trivex-app-read-folder">
        <source>This is a folder. Choose a file in it.</source>
        <translation>This is a folder. Choose a file in it.</translation>
    </message>
    <message id="trivex-app-read-missing">
        <source>The file is not there any more. Choose it again.</source>
        <translation>The file is not there any more. Choose it again.</translation>
    </message>
    <message id="trivex-app-read-name">
        <source>The name of this file has letters in an old encoding, so it can't be opened. Rename it and choose it again.</source>
        <translation>The name of this file has letters in an old encoding, so it can't be opened. Rename it and choose it again.</translation>
    </message>
    <message id="trivex-app-read-special">
        <source>This is a pipe, a device or a file of the running system. Choose an ordinary file.</source>
        <translation>This is a pipe, a device or a file of the running system. Choose an ordinary file.</translation>
    </message>
    <message id="trivex-app-read-too-big">
        <source>The file is too big: 2 GB and more can't be read here. Compress it or split it.</source>
        <translation>The file is too big: 2 GB and more can't be read here. Compress it or split it.</translation>
    </message>
    <message id="trivex-app-reading">
        <source>Reading the file…</source>
        <translation>Reading the file…</translation>
    </message>
    <message id="trivex-app-reason-affiliation">
        <source>the holder has changed</source>
        <translation>the holder has changed</translation>
    </message>
    <message id="trivex-app-reason-attribute">
        <source>the attribute authority's key is known to others</source>
        <translation>the attribute authority's key is known to others</translation>
    </message>
    <message id="trivex-app-reason-authority">
        <source>the authority's key is known to others</source>
        <translation>the authority's key is known to others</translation>
    </message>
    <message id="trivex-app-reason-cessation">
        <source>no longer needed</source>
        <translation>no longer needed</translation>
    </message>
    <message id="trivex-app-reason-hold">
        <source>suspended</source>
        <translation>suspended</translation>
    </message>
    <message id="trivex-app-reason-key">
        <source>the key is known to others</source>
        <translation>the key is known to others</translation>
    </message>
    <message id="trivex-app-reason-none">
        <source>no reason given</source>
        <translation>no reason given</translation>
    </message>
    <message id="trivex-app-reason-privilege">
        <source>a right was withdrawn</source>
        <translation>a right was withdrawn</translation>
    </message>
    <message id="trivex-app-reason-superseded">
        <source>replaced by another certificate</source>
        <translation>replaced by another certificate</translation>
    </message>
    <message id="trivex-app-reason-unhold">
        <source>no longer suspended</source>
        <translation>no longer suspended</translation>
    </message>
    <message id="trivex-app-refused">
        <source>The signature does not match this document and key.</source>
        <translation>The signature does not match this document and key.</translation>
    </message>
    <message id="trivex-app-refused-advice">
        <source>The document was changed after signing, or another key signed it. Choose the right key, or ask for the document again.</source>
        <translation>The document was changed after signing, or another key signed it. Choose the right key, or ask for the document again.</translation>
    </message>
    <message id="trivex-app-remember-tokens">
        <source>Show the certificates of known tokens at once</source>
        <translation>Show the certificates of known tokens at once</translation>
    </message>
    <message id="trivex-app-remember-tokens-hint">
        <source>What a token shows without a PIN is kept in your cache folder. On a computer that others use under your name it tells whose tokens were here. Switching this off removes it.</source>
        <translation>What a token shows without a PIN is kept in your cache folder. On a computer that others use under your name it tells whose tokens were here. Switching this off removes it.</translation>
    </message>
    <message id="trivex-app-remove">
        <source>Remove…</source>
        <translation>Remove…</translation>
    </message>
    <message id="trivex-app-remove-bundle-text">
        <source>The certificate and its private key are removed from “%1”.</source>
        <translation>The certificate and its private key are removed from “%1”.</translation>
    </message>
    <message id="trivex-app-remove-bundles-text">
        <source>The certificates and the private keys that belong to them are removed from: %1.</source>
        <translation>The certificates and the private keys that belong to them are removed from: %1.</translation>
    </message>
    <message id="trivex-app-remove-confirm">
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message id="trivex-app-remove-key-request">
        <source>Without its key a certificate is of no use: a request still waits for one. Request: %1</source>
        <translation>Without its key a certificate is of no use: a request still waits for one. Request: %1</translation>
    </message>
    <message id="trivex-app-remove-key-warning">
        <source>The key can't be brought back. Whatever was encrypted for it stays unreadable.</source>
        <translation>The key can't be brought back. Whatever was encrypted for it stays unreadable.</translation>
    </message>
    <message id="trivex-app-remove-keys-text" numerus="yes">
        <source>The keys are removed from “%1”. They have no certificates there.</source>
        <translation>
            <numerusform>The key is removed from “%1”. It has no certificate there.</numerusform>
            <numerusform>The keys are removed from “%1”. They have no certificates there.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-keys-title" numerus="yes">
        <source>Remove these %n keys?</source>
        <translation>
            <numerusform>Remove this key?</numerusform>
            <numerusform>Remove these %n keys?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-request-text">
        <source>The request file is deleted. Its key stays on the token.</source>
        <translation>The request file is deleted. Its key stays on the token.</translation>
    </message>
    <message id="trivex-app-remove-request-title">
        <source>Delete this request?</source>
        <translation>Delete this request?</translation>
    </message>
    <message id="trivex-app-remove-requests-text">
        <source>The request files are deleted. Their keys stay on the token.</source>
        <translation>The request files are deleted. Their keys stay on the token.</translation>
    </message>
    <message id="trivex-app-remove-requests-title" numerus="yes">
        <source>Delete these %n requests?</source>
        <translation>
            <numerusform>Delete %n request?</numerusform>
            <numerusform>Delete these %n requests?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-several-text">
        <source>The certificates are removed from: %1.</source>
        <translation>The certificates are removed from: %1.</translation>
    </message>
    <message id="trivex-app-remove-several-title" numerus="yes">
        <source>Remove these %n certificates?</source>
        <translation>
            <numerusform>Remove %n certificate?</numerusform>
            <numerusform>Remove these %n certificates?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-text">
        <source>The certificate is removed from “%1”.</source>
        <translation>The certificate is removed from “%1”.</translation>
    </message>
    <message id="trivex-app-remove-title">
        <source>Remove this certificate?</source>
        <translation>Remove this certificate?</translation>
    </message>
    <message id="trivex-app-removed">
        <source>Removed.</source>
        <translation>Removed.</translation>
    </message>
    <message id="trivex-app-replace-confirm">
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message id="trivex-app-replace-other">
        <source>Another name…</source>
        <translation>Another name…</translation>
    </message>
    <message id="trivex-app-replace-text">
        <source>A file of this name is already in the folder %1. What it holds will be lost.</source>
        <translation>A file of this name is already in the folder %1. What it holds will be lost.</translation>
    </message>
    <message id="trivex-app-replace-title">
        <source>Replace the file?</source>
        <translation>Replace the file?</translation>
    </message>
    <message id="trivex-app-request-busy">
        <source>Another request can't be begun yet.</source>
        <translation>Another request can't be begun yet.</translation>
    </message>
    <message id="trivex-app-request-busy-advice">
        <source>Wait until the key or the request that is being made is ready, or stop it.</source>
        <translation>Wait until the key or the request that is being made is ready, or stop it.</translation>
    </message>
    <message id="trivex-app-request-error-key">
        <source>The private key was not found. Insert its token and try again.</source>
        <translation>The private key was not found. Insert its token and try again.</translation>
    </message>
    <message id="trivex-app-request-error-make">
        <source>No key was made. Check the token and try again.</source>
        <translation>No key was made. Check the token and try again.</translation>
    </message>
    <message id="trivex-app-request-error-save">
        <source>The request could not be saved. Check the request folder and try again.</source>
        <translation>The request could not be saved. Check the request folder and try again.</translation>
    </message>
    <message id="trivex-app-request-error-sign">
        <source>The request was not signed. The key is kept: try again.</source>
        <translation>The request was not signed. The key is kept: try again.</translation>
    </message>
    <message id="trivex-app-request-for-key">
        <source>This request is for the key “%1”, which is on its token already.</source>
        <translation>This request is for the key “%1”, which is on its token already.</translation>
    </message>
    <message id="trivex-app-request-gone">
        <source>This request is no longer there.</source>
        <translation>This request is no longer there.</translation>
    </message>
    <message id="trivex-app-request-gone-advice">
        <source>It was removed or renamed in the meantime. Make a new request with what you have typed.</source>
        <translation>It was removed or renamed in the meantime. Make a new request with what you have typed.</translation>
    </message>
    <message id="trivex-app-request-next">
        <source>Send this file to a certification authority. When the certificate comes, import it: it finds its key by itself.</source>
        <translation>Send this file to a certification authority. When the certificate comes, import it: it finds its key by itself.</translation>
    </message>
    <message id="trivex-app-request-no-key">
        <source>The key of this request was not found.</source>
        <translation>The key of this request was not found.</translation>
    </message>
    <message id="trivex-app-request-no-key-advice">
        <source>Insert the token on which the key was made and try again.</source>
        <translation>Insert the token on which the key was made and try again.</translation>
    </message>
    <message id="trivex-app-request-not-made">
        <source>The request was not saved.</source>
        <translation>The request was not saved.</translation>
    </message>
    <message id="trivex-app-request-not-saved">
        <source>The request was not saved; the earlier file is unchanged.</source>
        <translation>The request was not saved; the earlier file is unchanged.</translation>
    </message>
    <message id="trivex-app-request-others">
        <source>The request also holds, and keeps: %1</source>
        <translation>The request also holds, and keeps: %1</translation>
    </message>
    <message id="trivex-app-request-problem-long">
        <source>This value is too long. Shorten it.</source>
        <translation>This value is too long. Shorten it.</translation>
    </message>
    <message id="trivex-app-request-problem-many">
        <source>There are more names than a certificate can have. Remove some.</source>
        <translation>There are more names than a certificate can have. Remove some.</translation>
    </message>
    <message id="trivex-app-request-problem-name">
        <source>The request has no name. Enter a name.</source>
        <translation>The request has no name. Enter a name.</translation>
    </message>
    <message id="trivex-app-request-problem-type">
        <source>This field is not known. Use one of the listed fields, or a number such as 1.2.3.</source>
        <translation>This field is not known. Use one of the listed fields, or a number such as 1.2.3.</translation>
    </message>
    <message id="trivex-app-request-problem-value">
        <source>This value has a wrong form. Correct it.</source>
        <translation>This value has a wrong form. Correct it.</translation>
    </message>
    <message id="trivex-app-request-stays">
        <source>The request “%1” could not be deleted.</source>
        <translation>The request “%1” could not be deleted.</translation>
    </message>
    <message id="trivex-app-request-stays-advice">
        <source>Check whether you may change the request folder, and try again.</source>
        <translation>Check whether you may change the request folder, and try again.</translation>
    </message>
    <message id="trivex-app-request-unread">
        <source>The request could not be read.</source>
        <translation>The request could not be read.</translation>
    </message>
    <message id="trivex-app-row-menu">
        <source>Actions for the selected rows</source>
        <translation>Actions for the selected rows</translation>
    </message>
    <message id="trivex-app-save">
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message id="trivex-app-save-as">
        <source>Save as…</source>
        <translation>Save as…</translation>
    </message>
    <message id="trivex-app-save-document">
        <source>Save the document</source>
        <translation>Save the document</translation>
    </message>
    <message id="trivex-app-save-pdf">
        <source>Save as PDF</source>
        <translation>Save as PDF</translation>
    </message>
    <message id="trivex-app-saved">
        <source>Saved.</source>
        <translation>Saved.</translation>
    </message>
    <message id="trivex-app-scope-attributes">
        <source>Only attribute certificates</source>
        <translation>Only attribute certificates</translation>
    </message>
    <message id="trivex-app-scope-authorities">
        <source>Only certificates of authorities</source>
        <translation>Only certificates of authorities</translation>
    </message>
    <message id="trivex-app-scope-holders">
        <source>Only certificates of holders</source>
        <translation>Only certificates of holders</translation>
    </message>
    <message id="trivex-app-scope-indirect">
        <source>Entries of other issuers</source>
        <translation>Entries of other issuers</translation>
    </message>
    <message id="trivex-app-search">
        <source>Search by name, issuer, number</source>
        <translation>Search by name, issuer, number</translation>
    </message>
    <message id="trivex-app-search-clear">
        <source>Clear the search</source>
        <translation>Clear the search</translation>
    </message>
    <message id="trivex-app-searching">
        <source>Searching…</source>
        <translation>Searching…</translation>
    </message>
    <message id="trivex-app-secret-hide">
        <source>Hide what is typed</source>
        <translation>Hide what is typed</translation>
    </message>
    <message id="trivex-app-secret-show">
        <source>Show what is typed</source>
        <translation>Show what is typed</translation>
    </message>
    <message id="trivex-app-section-certificates">
        <source>Certificates</source>
        <translation>Certificates</translation>
    </message>
    <message id="trivex-app-serial">
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message id="trivex-app-serial-decimal">
        <source>Serial number, decimal</source>
        <translation>Serial number, decimal</translation>
    </message>
    <message id="trivex-app-serves-client">
        <source>A person or a client shows who it is</source>
        <translation>A person or a client shows who it is</translation>
    </message>
    <message id="trivex-app-serves-code">
        <source>Sign programs</source>
        <translation>Sign programs</translation>
    </message>
    <message id="trivex-app-serves-mail">
        <source>Protect e-mail</source>
        <translation>Protect e-mail</translation>
    </message>
    <message id="trivex-app-serves-server">
        <source>A server shows who it is</source>
        <translation>A server shows who it is</translation>
    </message>
    <message id="trivex-app-serves-status">
        <source>Tell whether certificates are revoked</source>
        <translation>Tell whether certificates are revoked</translation>
    </message>
    <message id="trivex-app-serves-time">
        <source>Sign time stamps</source>
        <translation>Sign time stamps</translation>
    </message>
    <message id="trivex-app-set-pin">
        <source>Set PIN…</source>
        <translation>Set PIN…</translation>
    </message>
    <message id="trivex-app-set-pin-title">
        <source>Set the PIN</source>
        <translation>Set the PIN</translation>
    </message>
    <message id="trivex-app-settings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="trivex-app-settings-not-kept">
        <source>Your settings folder can't be written. What you choose here lasts until the program is closed.</source>
        <translation>Your settings folder can't be written. What you choose here lasts until the program is closed.</translation>
    </message>
    <message id="trivex-app-settings-not-saved">
        <source>This choice could not be saved. Check that your settings folder can be written, then choose again.</source>
        <translation>This choice could not be saved. Check that your settings folder can be written, then choose again.</translation>
    </message>
    <message id="trivex-app-show-details">
        <source>Show details</source>
        <translation>Show details</translation>
    </message>
    <message id="trivex-app-show-less">
        <source>Show less</source>
        <translation>Show less</translation>
    </message>
    <message id="trivex-app-show-more">
        <source>Show all that a request can have</source>
        <translation>Show all that a request can have</translation>
    </message>
    <message id="trivex-app-sign-action">
        <source>Sign</source>
        <translation>Sign</translation>
    </message>
    <message id="trivex-app-sign-verify">
        <source>Sign and verify</source>
        <translation>Sign and verify</translation>
    </message>
    <message id="trivex-app-signature-algorithm">
        <source>Signature algorithm</source>
        <translation>Signature algorithm</translation>
    </message>
    <message id="trivex-app-signature-elsewhere">
        <source>Save the signature as…</source>
        <translation>Save the signature as…</translation>
    </message>
    <message id="trivex-app-signature-file">
        <source>Signature file</source>
        <translation>Signature file</translation>
    </message>
    <message id="trivex-app-signature-form">
        <source>Kind of signature</source>
        <translation>Kind of signature</translation>
    </message>
    <message id="trivex-app-signature-group">
        <source>Signature</source>
        <translation>Signature</translation>
    </message>
    <message id="trivex-app-signature-opened">
        <source>This file is a signature.</source>
        <translation>This file is a signature.</translation>
    </message>
    <message id="trivex-app-signature-opened-advice">
        <source>Now choose the document that it was made for.</source>
        <translation>Now choose the document that it was made for.</translation>
    </message>
    <message id="trivex-app-signature-signed">
        <source>Signature algorithm, as signed</source>
        <translation>Signature algorithm, as signed</translation>
    </message>
    <message id="trivex-app-signature-value">
        <source>Value</source>
        <translation>Value</translation>
    </message>
    <message id="trivex-app-signature-waits">
        <source>Another file is in its place. Agree to replace it, or choose another name.</source>
        <translation>Another file is in its place. Agree to replace it, or choose another name.</translation>
    </message>
    <message id="trivex-app-signature-with">
        <source>%1 with %2</source>
        <translation>%1 with %2</translation>
    </message>
    <message id="trivex-app-signed">
        <source>The document is signed.</source>
        <translation>The document is signed.</translation>
    </message>
    <message id="trivex-app-signed-attached-hint">
        <source>The document is in this file.</source>
        <translation>The document is in this file.</translation>
    </message>
    <message id="trivex-app-signed-detached-hint">
        <source>Send the document and this file together.</source>
        <translation>Send the document and this file together.</translation>
    </message>
    <message id="trivex-app-signer-changed">
        <source>The document is not the one that was signed.</source>
        <translation>The document is not the one that was signed.</translation>
    </message>
    <message id="trivex-app-signer-changed-advice">
        <source>It was changed after it was signed, or the signature belongs to another document.</source>
        <translation>It was changed after it was signed, or the signature belongs to another document.</translation>
    </message>
    <message id="trivex-app-signer-damaged">
        <source>The signature is wrong.</source>
        <translation>The signature is wrong.</translation>
    </message>
    <message id="trivex-app-signer-damaged-advice">
        <source>It was damaged or forged. Ask for it to be sent again.</source>
        <translation>It was damaged or forged. Ask for it to be sent again.</translation>
    </message>
    <message id="trivex-app-signer-expired">
        <source>The certificate has expired. When it was signed is not stated.</source>
        <translation>The certificate has expired. When it was signed is not stated.</translation>
    </message>
    <message id="trivex-app-signer-expired-since">
        <source>The certificate has expired since. It was valid at the time that the signature states.</source>
        <translation>The certificate has expired since. It was valid at the time that the signature states.</translation>
    </message>
    <message id="trivex-app-signer-faulty">
        <source>The document is unchanged, but the certificate of this signature is not in order.</source>
        <translation>The document is unchanged, but the certificate of this signature is not in order.</translation>
    </message>
    <message id="trivex-app-signer-good">
        <source>The signature is good, and the document is unchanged.</source>
        <translation>The signature is good, and the document is unchanged.</translation>
    </message>
    <message id="trivex-app-signer-issuer-only">
        <source>Issuer of the certificate: %1</source>
        <translation>Issuer of the certificate: %1</translation>
    </message>
    <message id="trivex-app-signer-missing">
        <source>The certificate of this signature is missing.</source>
        <translation>The certificate of this signature is missing.</translation>
    </message>
    <message id="trivex-app-signer-missing-advice">
        <source>Ask for the certificate, import it and verify once more.</source>
        <translation>Ask for the certificate, import it and verify once more.</translation>
    </message>
    <message id="trivex-app-signer-not-valid">
        <source>The document is unchanged, but the certificate was not valid when it was signed.</source>
        <translation>The document is unchanged, but the certificate was not valid when it was signed.</translation>
    </message>
    <message id="trivex-app-signer-not-valid-advice">
        <source>Ask for it to be signed with a valid certificate.</source>
        <translation>Ask for it to be signed with a valid certificate.</translation>
    </message>
    <message id="trivex-app-signer-revoked">
        <source>The certificate of this signature was revoked.</source>
        <translation>The certificate of this signature was revoked.</translation>
    </message>
    <message id="trivex-app-signer-revoked-advice">
        <source>Do not rely on it. Ask for it to be signed with another certificate.</source>
        <translation>Do not rely on it. Ask for it to be signed with another certificate.</translation>
    </message>
    <message id="trivex-app-signer-swapped">
        <source>This is not the certificate of the signature.</source>
        <translation>This is not the certificate of the signature.</translation>
    </message>
    <message id="trivex-app-signer-swapped-advice">
        <source>The signature names another certificate. Ask for the document to be signed again.</source>
        <translation>The signature names another certificate. Ask for the document to be signed again.</translation>
    </message>
    <message id="trivex-app-signer-unchecked">
        <source>The signature waits for its document.</source>
        <translation>The signature waits for its document.</translation>
    </message>
    <message id="trivex-app-signer-unchecked-advice">
        <source>Choose the document that was signed.</source>
        <translation>Choose the document that was signed.</translation>
    </message>
    <message id="trivex-app-signer-unknown">
        <source>This computer does not know the algorithm of this signature.</source>
        <translation>This computer does not know the algorithm of this signature.</translation>
    </message>
    <message id="trivex-app-signer-unknown-advice">
        <source>Verify it on a computer that does, or ask for another signature.</source>
        <translation>Verify it on a computer that does, or ask for another signature.</translation>
    </message>
    <message id="trivex-app-signer-untrusted">
        <source>The document is unchanged. Whose signature it is can't be confirmed.</source>
        <translation>The document is unchanged. Whose signature it is can't be confirmed.</translation>
    </message>
    <message id="trivex-app-signer-untrusted-advice">
        <source>No path leads from the certificate to a root that this computer trusts. If you trust the issuer, import its root certificate and verify once more.</source>
        <translation>No path leads from the certificate to a root that this computer trusts. If you trust the issuer, import its root certificate and verify once more.</translation>
    </message>
    <message id="trivex-app-signer-weak">
        <source>It uses an outdated digest, with which documents can be forged.</source>
        <translation>It uses an outdated digest, with which documents can be forged.</translation>
    </message>
    <message id="trivex-app-signer-when">
        <source>Signed at %1, as the signature states.</source>
        <translation>Signed at %1, as the signature states.</translation>
    </message>
    <message id="trivex-app-signer-who">
        <source>%1, certificate issued by %2</source>
        <translation>%1, certificate issued by %2</translation>
    </message>
    <message id="trivex-app-sort">
        <source>Sort</source>
        <translation>Sort</translation>
    </message>
    <message id="trivex-app-sort-ascending">
        <source>ascending</source>
        <translation>ascending</translation>
    </message>
    <message id="trivex-app-sort-descending">
        <source>descending</source>
        <translation>descending</translation>
    </message>
    <message id="trivex-app-sort-end">
        <source>By the end of validity</source>
        <translation>By the end of validity</translation>
    </message>
    <message id="trivex-app-sort-issuer">
        <source>By issuer</source>
        <translation>By issuer</translation>
    </message>
    <message id="trivex-app-sort-name">
        <source>By name</source>
        <translation>By name</translation>
    </message>
    <message id="trivex-app-sort-place">
        <source>By place</source>
        <translation>By place</translation>
    </message>
    <message id="trivex-app-start-no-token">
        <source>There is no token yet. Insert one to make a key and a request for a certificate, import a certificate that you have, or open a file to check its signature.</source>
        <translation>There is no token yet. Insert one to make a key and a request for a certificate, import a certificate that you have, or open a file to check its signature.</translation>
    </message>
    <message id="trivex-app-start-title">
        <source>Begin here</source>
        <translation>Begin here</translation>
    </message>
    <message id="trivex-app-start-token">
        <source>Your token is “%1”. Make a key and a request for a certificate on it, import a certificate or bundle that you have, or open a file to sign it or to check its signature.</source>
        <translation>Your token is “%1”. Make a key and a request for a certificate on it, import a certificate or bundle that you have, or open a file to sign it or to check its signature.</translation>
    </message>
    <message id="trivex-app-step-document">
        <source>Document</source>
        <translation>Document</translation>
    </message>
    <message id="trivex-app-step-done">
        <source>The request is ready</source>
        <translation>The request is ready</translation>
    </message>
    <message id="trivex-app-step-key">
        <source>1. A key on a token</source>
        <translation>1. A key on a token</translation>
    </message>
    <message id="trivex-app-step-signature">
        <source>Signature</source>
        <translation>Signature</translation>
    </message>
    <message id="trivex-app-step-signer">
        <source>Key</source>
        <translation>Key</translation>
    </message>
    <message id="trivex-app-step-subject">
        <source>2. The holder of the certificate</source>
        <translation>2. The holder of the certificate</translation>
    </message>
    <message id="trivex-app-stop">
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message id="trivex-app-structure">
        <source>Structure</source>
        <translation>Structure</translation>
    </message>
    <message id="trivex-app-system-stays">
        <source>The system's own certificates can't be removed here.</source>
        <translation>The system's own certificates can't be removed here.</translation>
    </message>
    <message id="trivex-app-system-stays-advice">
        <source>They belong to the system, and its administrator changes them.</source>
        <translation>They belong to the system, and its administrator changes them.</translation>
    </message>
    <message id="trivex-app-take-key">
        <source>Use this key</source>
        <translation>Use this key</translation>
    </message>
    <message id="trivex-app-text-all">
        <source>Select all</source>
        <translation>Select all</translation>
    </message>
    <message id="trivex-app-text-copy">
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message id="trivex-app-text-cut">
        <source>Cut</source>
        <translation>Cut</translation>
    </message>
    <message id="trivex-app-text-paste">
        <source>Paste</source>
        <translation>Paste</translation>
    </message>
    <message id="trivex-app-text-size">
        <source>Text size</source>
        <translation>Text size</translation>
    </message>
    <message id="trivex-app-token">
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message id="trivex-app-token-abilities">
        <source>What it can do</source>
        <translation>What it can do</translation>
    </message>
    <message id="trivex-app-token-absent">
        <source>This token is not inserted.</source>
        <translation>This token is not inserted.</translation>
    </message>
    <message id="trivex-app-token-certificates">
        <source>Certificates</source>
        <translation>Certificates</translation>
    </message>
    <message id="trivex-app-token-contents">
        <source>On it</source>
        <translation>On it</translation>
    </message>
    <message id="trivex-app-token-data">
        <source>Other data</source>
        <translation>Other data</translation>
    </message>
    <message id="trivex-app-token-firmware">
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message id="trivex-app-token-free">
        <source>%1 free</source>
        <translation>%1 free</translation>
    </message>
    <message id="trivex-app-token-group">
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message id="trivex-app-token-hardware">
        <source>Hardware</source>
        <translation>Hardware</translation>
    </message>
    <message id="trivex-app-token-keys">
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message id="trivex-app-token-keys-hidden">
        <source>There may be more, which show only after the PIN.</source>
        <translation>There may be more, which show only after the PIN.</translation>
    </message>
    <message id="trivex-app-token-label">
        <source>Name on the token</source>
        <translation>Name on the token</translation>
    </message>
    <message id="trivex-app-token-maker">
        <source>Maker</source>
        <translation>Maker</translation>
    </message>
    <message id="trivex-app-token-menu">
        <source>Token…</source>
        <translation>Token…</translation>
    </message>
    <message id="trivex-app-token-model">
        <source>Model</source>
        <translation>Model</translation>
    </message>
    <message id="trivex-app-token-name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="trivex-app-token-name-hint">
        <source>Up to 32 bytes: 16 Cyrillic letters.</source>
        <translation>Up to 32 bytes: 16 Cyrillic letters.</translation>
    </message>
    <message id="trivex-app-token-new-name">
        <source>New name</source>
        <translation>New name</translation>
    </message>
    <message id="trivex-app-token-no-abilities">
        <source>It neither makes keys nor signs.</source>
        <translation>It neither makes keys nor signs.</translation>
    </message>
    <message id="trivex-app-token-pin-group">
        <source>PIN</source>
        <translation>PIN</translation>
    </message>
    <message id="trivex-app-token-pin-pad">
        <source>the reader's own keys</source>
        <translation>the reader's own keys</translation>
    </message>
    <message id="trivex-app-token-pin-where">
        <source>Entered on</source>
        <translation>Entered on</translation>
    </message>
    <message id="trivex-app-token-protected">
        <source>Write-protected</source>
        <translation>Write-protected</translation>
    </message>
    <message id="trivex-app-token-read-only">
        <source>This token is write-protected.</source>
        <translation>This token is write-protected.</translation>
    </message>
    <message id="trivex-app-token-removed">
        <source>removed</source>
        <translation>removed</translation>
    </message>
    <message id="trivex-app-token-removed-text">
        <source>This token was taken out. Its certificates return when it is inserted again.</source>
        <translation>This token was taken out. Its certificates return when it is inserted again.</translation>
    </message>
    <message id="trivex-app-token-secrets">
        <source>Secret keys</source>
        <translation>Secret keys</translation>
    </message>
    <message id="trivex-app-token-serial">
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message id="trivex-app-token-space">
        <source>%1 free of %2</source>
        <translation>%1 free of %2</translation>
    </message>
    <message id="trivex-app-token-space-row">
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message id="trivex-app-token-tries">
        <source>Tries</source>
        <translation>Tries</translation>
    </message>
    <message id="trivex-app-token-wants-pin">
        <source>Wants a PIN</source>
        <translation>Wants a PIN</translation>
    </message>
    <message id="trivex-app-tokens">
        <source>Tokens</source>
        <translation>Tokens</translation>
    </message>
    <message id="trivex-app-too-large-to-show">
        <source>It is too large to be shown here. Export it as a file.</source>
        <translation>It is too large to be shown here. Export it as a file.</translation>
    </message>
    <message id="trivex-app-tool-authority">
        <source>Tool of the authority</source>
        <translation>Tool of the authority</translation>
    </message>
    <message id="trivex-app-tool-authority-proof">
        <source>Conformity of the authority's tool</source>
        <translation>Conformity of the authority's tool</translation>
    </message>
    <message id="trivex-app-tool-signature">
        <source>Tool</source>
        <translation>Tool</translation>
    </message>
    <message id="trivex-app-tool-signature-proof">
        <source>Conformity of the tool</source>
        <translation>Conformity of the tool</translation>
    </message>
    <message id="trivex-app-transparency-log">
        <source>Log</source>
        <translation>Log</translation>
    </message>
    <message id="trivex-app-transparency-time">
        <source>Entered</source>
        <translation>Entered</translation>
    </message>
    <message id="trivex-app-tries-all">
        <source>no wrong PIN is reported</source>
        <translation>no wrong PIN is reported</translation>
    </message>
    <message id="trivex-app-tries-fewer">
        <source>fewer than at first</source>
        <translation>fewer than at first</translation>
    </message>
    <message id="trivex-app-tries-none">
        <source>none, the PIN is locked</source>
        <translation>none, the PIN is locked</translation>
    </message>
    <message id="trivex-app-tries-not-set">
        <source>no PIN is set</source>
        <translation>no PIN is set</translation>
    </message>
    <message id="trivex-app-tries-one">
        <source>one</source>
        <translation>one</translation>
    </message>
    <message id="trivex-app-unblock">
        <source>Unlock</source>
        <translation>Unlock</translation>
    </message>
    <message id="trivex-app-set-it">
        <source>Set</source>
        <translation>Set</translation>
    </message>
    <message id="trivex-app-unblock-pin">
        <source>Unlock PIN…</source>
        <translation>Unlock PIN…</translation>
    </message>
    <message id="trivex-app-unblock-pin-title">
        <source>Unlock the PIN</source>
        <translation>Unlock the PIN</translation>
    </message>
    <message id="trivex-app-undo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="trivex-app-undo-failed">
        <source>What was removed could not be brought back.</source>
        <translation>What was removed could not be brought back.</translation>
    </message>
    <message id="trivex-app-undo-no-token">
        <source>The token is not there. Insert it and try again.</source>
        <translation>The token is not there. Insert it and try again.</translation>
    </message>
    <message id="trivex-app-undo-taken">
        <source>There is another request of this name by now. Rename it and try again.</source>
        <translation>There is another request of this name by now. Rename it and try again.</translation>
    </message>
    <message id="trivex-app-undone" numerus="yes">
        <source>%n items are back</source>
        <translation>
            <numerusform>%n item is back</numerusform>
            <numerusform>%n items are back</numerusform>
        </translation>
    </message>
    <message id="trivex-app-unfit-keys">
        <source>Keys that their token cannot sign with are not listed.</source>
        <translation>Keys that their token cannot sign with are not listed.</translation>
    </message>
    <message id="trivex-app-unique-holder">
        <source>Unique identifier of the holder</source>
        <translation>Unique identifier of the holder</translation>
    </message>
    <message id="trivex-app-unique-issuer">
        <source>Unique identifier of the issuer</source>
        <translation>Unique identifier of the issuer</translation>
    </message>
    <message id="trivex-app-unsigned">
        <source>The document was not signed.</source>
        <translation>The document was not signed.</translation>
    </message>
    <message id="trivex-app-unsigned-advice">
        <source>Check the token, or choose an RSA key: only these can sign here.</source>
        <translation>Check the token, or choose an RSA key: only these can sign here.</translation>
    </message>
    <message id="trivex-app-until">
        <source>until %1</source>
        <translation>until %1</translation>
    </message>
    <message id="trivex-app-unwritten">
        <source>The signature could not be written.</source>
        <translation>The signature could not be written.</translation>
    </message>
    <message id="trivex-app-usage-agree">
        <source>Agree on keys</source>
        <translation>Agree on keys</translation>
    </message>
    <message id="trivex-app-usage-agreement">
        <source>key agreement</source>
        <translation>key agreement</translation>
    </message>
    <message id="trivex-app-usage-certificates">
        <source>signing certificates</source>
        <translation>signing certificates</translation>
    </message>
    <message id="trivex-app-usage-commit">
        <source>Sign for good, not to be denied</source>
        <translation>Sign for good, not to be denied</translation>
    </message>
    <message id="trivex-app-usage-commitment">
        <source>non-repudiation</source>
        <translation>non-repudiation</translation>
    </message>
    <message id="trivex-app-usage-data-encryption">
        <source>encrypting data</source>
        <translation>encrypting data</translation>
    </message>
    <message id="trivex-app-usage-decipher">
        <source>agreement for decrypting only</source>
        <translation>agreement for decrypting only</translation>
    </message>
    <message id="trivex-app-usage-decrypt-only">
        <source>Agree on keys to decrypt only</source>
        <translation>Agree on keys to decrypt only</translation>
    </message>
    <message id="trivex-app-usage-encipher">
        <source>agreement for encrypting only</source>
        <translation>agreement for encrypting only</translation>
    </message>
    <message id="trivex-app-usage-encrypt-data">
        <source>Encrypt data</source>
        <translation>Encrypt data</translation>
    </message>
    <message id="trivex-app-usage-encrypt-keys">
        <source>Encrypt keys</source>
        <translation>Encrypt keys</translation>
    </message>
    <message id="trivex-app-usage-encrypt-only">
        <source>Agree on keys to encrypt only</source>
        <translation>Agree on keys to encrypt only</translation>
    </message>
    <message id="trivex-app-usage-key-encryption">
        <source>encrypting keys</source>
        <translation>encrypting keys</translation>
    </message>
    <message id="trivex-app-usage-lists">
        <source>signing lists of revoked certificates</source>
        <translation>signing lists of revoked certificates</translation>
    </message>
    <message id="trivex-app-usage-sign">
        <source>Sign data</source>
        <translation>Sign data</translation>
    </message>
    <message id="trivex-app-usage-sign-certificates">
        <source>Sign certificates</source>
        <translation>Sign certificates</translation>
    </message>
    <message id="trivex-app-usage-sign-lists">
        <source>Sign lists of revoked certificates</source>
        <translation>Sign lists of revoked certificates</translation>
    </message>
    <message id="trivex-app-usage-signature">
        <source>digital signature</source>
        <translation>digital signature</translation>
    </message>
    <message id="trivex-app-usages">
        <source>What the key does</source>
        <translation>What the key does</translation>
    </message>
    <message id="trivex-app-use-any">
        <source>Any purpose</source>
        <translation>Any purpose</translation>
    </message>
    <message id="trivex-app-use-client">
        <source>Client of a server</source>
        <translation>Client of a server</translation>
    </message>
    <message id="trivex-app-use-code">
        <source>Signing programs</source>
        <translation>Signing programs</translation>
    </message>
    <message id="trivex-app-use-documents">
        <source>Signing documents</source>
        <translation>Signing documents</translation>
    </message>
    <message id="trivex-app-use-email">
        <source>Protecting e-mail</source>
        <translation>Protecting e-mail</translation>
    </message>
    <message id="trivex-app-use-files">
        <source>Encrypting files</source>
        <translation>Encrypting files</translation>
    </message>
    <message id="trivex-app-use-ipsec">
        <source>IPsec</source>
        <translation>IPsec</translation>
    </message>
    <message id="trivex-app-use-logon">
        <source>Signing in with a token</source>
        <translation>Signing in with a token</translation>
    </message>
    <message id="trivex-app-use-ocsp">
        <source>Answers about revocation (OCSP)</source>
        <translation>Answers about revocation (OCSP)</translation>
    </message>
    <message id="trivex-app-use-server">
        <source>Web server</source>
        <translation>Web server</translation>
    </message>
    <message id="trivex-app-use-time">
        <source>Time stamps</source>
        <translation>Time stamps</translation>
    </message>
    <message id="trivex-app-valid-from">
        <source>Valid from</source>
        <translation>Valid from</translation>
    </message>
    <message id="trivex-app-valid-until">
        <source>Valid until</source>
        <translation>Valid until</translation>
    </message>
    <message id="trivex-app-validity-elapsed">
        <source>Share of the validity period that has passed</source>
        <translation>Share of the validity period that has passed</translation>
    </message>
    <message id="trivex-app-validity-expired">
        <source>Expired</source>
        <translation>Expired</translation>
    </message>
    <message id="trivex-app-validity-expiring">
        <source>Expires soon</source>
        <translation>Expires soon</translation>
    </message>
    <message id="trivex-app-validity-group">
        <source>Validity</source>
        <translation>Validity</translation>
    </message>
    <message id="trivex-app-validity-not-yet">
        <source>Not yet valid</source>
        <translation>Not yet valid</translation>
    </message>
    <message id="trivex-app-validity-valid">
        <source>Valid</source>
        <translation>Valid</translation>
    </message>
    <message id="trivex-app-verified">
        <source>The signature is good.</source>
        <translation>The signature is good.</translation>
    </message>
    <message id="trivex-app-verified-by">
        <source>Signed by %1; the document is unchanged.</source>
        <translation>Signed by %1; the document is unchanged.</translation>
    </message>
    <message id="trivex-app-verify-action">
        <source>Verify</source>
        <translation>Verify</translation>
    </message>
    <message id="trivex-app-verify-failed">
        <source>The signature was not verified.</source>
        <translation>The signature was not verified.</translation>
    </message>
    <message id="trivex-app-verify-moved">
        <source>A file was changed while it was being read. Verify once more.</source>
        <translation>A file was changed while it was being read. Verify once more.</translation>
    </message>
    <message id="trivex-app-verify-no-document">
        <source>The signature waits for its document. Choose the document that was signed.</source>
        <translation>The signature waits for its document. Choose the document that was signed.</translation>
    </message>
    <message id="trivex-app-verify-no-message">
        <source>This file is not a signature that can be read. Ask for it to be sent again.</source>
        <translation>This file is not a signature that can be read. Ask for it to be sent again.</translation>
    </message>
    <message id="trivex-app-verify-not-written">
        <source>The document could not be written. Choose another folder or check the disk.</source>
        <translation>The document could not be written. Choose another folder or check the disk.</translation>
    </message>
    <message id="trivex-app-verify-stopped">
        <source>Verifying was stopped. Start again when you like.</source>
        <translation>Verifying was stopped. Start again when you like.</translation>
    </message>
    <message id="trivex-app-version">
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message id="trivex-app-view">
        <source>View</source>
        <translation>View</translation>
    </message>
    <message id="trivex-app-work">
        <source>What you can do</source>
        <translation>What you can do</translation>
    </message>
    <message id="trivex-app-write-denied">
        <source>You may not write to this folder. Choose another one.</source>
        <translation>You may not write to this folder. Choose another one.</translation>
    </message>
    <message id="trivex-app-write-failed">
        <source>The file could not be written whole. Choose another folder or check the disk.</source>
        <translation>The file could not be written whole. Choose another folder or check the disk.</translation>
    </message>
    <message id="trivex-app-write-full">
        <source>The disk is full. Free some space or choose another folder.</source>
        <translation>The disk is full. Free some space or choose another folder.</translation>
    </message>
    <message id="trivex-app-write-is-folder">
        <source>There is a folder of this name. Choose another name.</source>
        <translation>There is a folder of this name. Choose another name.</translation>
    </message>
    <message id="trivex-app-write-no-folder">
        <source>The folder does not exist any more. Choose another one.</source>
        <translation>The folder does not exist any more. Choose another one.</translation>
    </message>
    <message id="trivex-app-write-no-temporary">
        <source>The folder for temporary files (%1) can't be used. Free some space there or choose another one (TMPDIR), then start the program again.</source>
        <translation>The folder for temporary files (%1) can't be used. Free some space there or choose another one (TMPDIR), then start the program again.</translation>
    </message>
    <message id="trivex-app-write-read-only">
        <source>This disk is write-protected. Choose another folder.</source>
        <translation>This disk is write-protected. Choose another folder.</translation>
    </message>
    <message id="trivex-app-yes">
        <source>yes</source>
        <translation>yes</translation>
    </message>
    <message id="trivex-console-about">
        <source>Certificates, keys and requests</source>
        <translation>Certificates, keys and requests</translation>
    </message>
    <message id="trivex-console-attached">
        <source>Put the document into the signature (.p7m).</source>
        <translation>Put the document into the signature (.p7m).</translation>
    </message>
    <message id="trivex-console-broken" numerus="yes">
        <source>%1: %n parts are damaged and left out</source>
        <translation>
            <numerusform>%1: %n part is damaged and left out</numerusform>
            <numerusform>%1: %n parts are damaged and left out</numerusform>
        </translation>
    </message>
    <message id="trivex-console-document">
        <source>holds no certificate, request, list, key or bundle</source>
        <translation>holds no certificate, request, list, key or bundle</translation>
    </message>
    <message id="trivex-console-document-option">
        <source>The document that the signature belongs to.</source>
        <translation>The document that the signature belongs to.</translation>
    </message>
    <message id="trivex-console-empty">
        <source>holds no certificates</source>
        <translation>holds no certificates</translation>
    </message>
    <message id="trivex-console-exists">
        <source>%1 exists; --replace replaces it.</source>
        <translation>%1 exists; --replace replaces it.</translation>
    </message>
    <message id="trivex-console-files">
        <source>files</source>
        <translation>files</translation>
    </message>
    <message id="trivex-console-files-about">
        <source>Certificates, bundles or documents; without another option they open in the window.</source>
        <translation>Certificates, bundles or documents; without another option they open in the window.</translation>
    </message>
    <message id="trivex-console-incomplete">
        <source>Not all stores have answered within a minute: certificates may be missing here.</source>
        <translation>Not all stores have answered within a minute: certificates may be missing here.</translation>
    </message>
    <message id="trivex-console-json">
        <source>Answer in JSON (UTF-8), for programs.</source>
        <translation>Answer in JSON (UTF-8), for programs.</translation>
    </message>
    <message id="trivex-console-key">
        <source>Whose key signs: the name of its certificate, or its SHA-256 fingerprint.</source>
        <translation>Whose key signs: the name of its certificate, or its SHA-256 fingerprint.</translation>
    </message>
    <message id="trivex-console-key-elsewhere">
        <source>The certificate “%1” is here, but not its key. Insert the token that holds the key, or choose a certificate that --list shows with its key. Without a key:</source>
        <translation>The certificate “%1” is here, but not its key. Insert the token that holds the key, or choose a certificate that --list shows with its key. Without a key:</translation>
    </message>
    <message id="trivex-console-list">
        <source>List the certificates of the tokens, of your own store and of the system.</source>
        <translation>List the certificates of the tokens, of your own store and of the system.</translation>
    </message>
    <message id="trivex-console-lost-answer">
        <source>The answer could not be written: %1</source>
        <translation>The answer could not be written: %1</translation>
    </message>
    <message id="trivex-console-name-unsure">
        <source>Not signed: “%1” may be the name of a key on what is missing, too. To sign with the key that is here, name it by its SHA-256 fingerprint, which stands first, or by its id:</source>
        <translation>Not signed: “%1” may be the name of a key on what is missing, too. To sign with the key that is here, name it by its SHA-256 fingerprint, which stands first, or by its id:</translation>
    </message>
    <message id="trivex-console-needs-file">
        <source>%1 needs a file.</source>
        <translation>%1 needs a file.</translation>
    </message>
    <message id="trivex-console-needs-key">
        <source>--sign needs --key: the name of a certificate with a key, as --list shows it.</source>
        <translation>--sign needs --key: the name of a certificate with a key, as --list shows it.</translation>
    </message>
    <message id="trivex-console-no-display">
        <source>There is no display for the window here. See --help for what works without one.</source>
        <translation>There is no display for the window here. See --help for what works without one.</translation>
    </message>
    <message id="trivex-console-no-file">
        <source>There is no such file.</source>
        <translation>There is no such file.</translation>
    </message>
    <message id="trivex-console-no-pin">
        <source>%1 holds no PIN, or can't be read.</source>
        <translation>%1 holds no PIN, or can't be read.</translation>
    </message>
    <message id="trivex-console-no-such-key">
        <source>No certificate has the name, the fingerprint or the id “%1”. See --list.</source>
        <translation>No certificate has the name, the fingerprint or the id “%1”. See --list.</translation>
    </message>
    <message id="trivex-console-no-terminal">
        <source>is a bundle: its password is asked for at a terminal, or see --password-file</source>
        <translation>is a bundle: its password is asked for at a terminal, or see --password-file</translation>
    </message>
    <message id="trivex-console-one-file">
        <source>%1 takes one file.</source>
        <translation>%1 takes one file.</translation>
    </message>
    <message id="trivex-console-one-work">
        <source>%1 and %2 exclude each other.</source>
        <translation>%1 and %2 exclude each other.</translation>
    </message>
    <message id="trivex-console-option-alone">
        <source>%1 does not fit here. See --help.</source>
        <translation>%1 does not fit here. See --help.</translation>
    </message>
    <message id="trivex-console-output">
        <source>Write the signature to this file.</source>
        <translation>Write the signature to this file.</translation>
    </message>
    <message id="trivex-console-password">
        <source>Password of %1:</source>
        <translation>Password of %1:</translation>
    </message>
    <message id="trivex-console-password-file">
        <source>Take the password of a bundle from the first line of this file.</source>
        <translation>Take the password of a bundle from the first line of this file.</translation>
    </message>
    <message id="trivex-console-pin">
        <source>PIN of %1, %2:</source>
        <translation>PIN of %1, %2:</translation>
    </message>
    <message id="trivex-console-pin-file">
        <source>Take the PIN of the token from the first line of this file.</source>
        <translation>Take the PIN of the token from the first line of this file.</translation>
    </message>
    <message id="trivex-console-pin-not-tried">
        <source>The PIN in the file is not tried: a wrong one could lock the token. Type the PIN.</source>
        <translation>The PIN in the file is not tried: a wrong one could lock the token. Type the PIN.</translation>
    </message>
    <message id="trivex-console-raw-signature">
        <source>is a signature and nothing else</source>
        <translation>is a signature and nothing else</translation>
    </message>
    <message id="trivex-console-reading">
        <source>Reading the tokens…</source>
        <translation>Reading the tokens…</translation>
    </message>
    <message id="trivex-console-replace">
        <source>Replace the file of the signature where there is one.</source>
        <translation>Replace the file of the signature where there is one.</translation>
    </message>
    <message id="trivex-console-several-keys">
        <source>Several certificates fit. Name one by its SHA-256 fingerprint, which stands first here, or by its id:</source>
        <translation>Several certificates fit. Name one by its SHA-256 fingerprint, which stands first here, or by its id:</translation>
    </message>
    <message id="trivex-console-show">
        <source>Show everything in the files: certificates, requests, lists, keys and bundles.</source>
        <translation>Show everything in the files: certificates, requests, lists, keys and bundles.</translation>
    </message>
    <message id="trivex-console-sign">
        <source>Sign the file with the key that --key names; the result (CMS) lies beside it.</source>
        <translation>Sign the file with the key that --key names; the result (CMS) lies beside it.</translation>
    </message>
    <message id="trivex-console-silent-module">
        <source>The module %1 has not answered within a minute: its tokens are missing here.</source>
        <translation>The module %1 has not answered within a minute: its tokens are missing here.</translation>
    </message>
    <message id="trivex-console-store" numerus="yes">
        <source>%1: %n certificates</source>
        <translation>
            <numerusform>%1: %n certificate</numerusform>
            <numerusform>%1: %n certificates</numerusform>
        </translation>
    </message>
    <message id="trivex-console-store-unread">
        <source>%1: not read</source>
        <translation>%1: not read</translation>
    </message>
    <message id="trivex-console-takes-no-file">
        <source>%1 takes no file.</source>
        <translation>%1 takes no file.</translation>
    </message>
    <message id="trivex-console-token-part">
        <source>There are certificates on it that could not be read, and are missing here.</source>
        <translation>There are certificates on it that could not be read, and are missing here.</translation>
    </message>
    <message id="trivex-console-token-unread">
        <source>It has not been read to its end in time.</source>
        <translation>It has not been read to its end in time.</translation>
    </message>
    <message id="trivex-console-unread">
        <source>The token %1 could not be read: %2</source>
        <translation>The token %1 could not be read: %2</translation>
    </message>
    <message id="trivex-console-value">
        <source>text</source>
        <translation>text</translation>
    </message>
    <message id="trivex-console-verify">
        <source>Check the signatures in the file, or those of the file in the .p7s beside it.</source>
        <translation>Check the signatures in the file, or those of the file in the .p7s beside it.</translation>
    </message>
    <message id="trivex-console-with-key">
        <source>with its key</source>
        <translation>with its key</translation>
    </message>
    <message id="trivex-console-wrong-password">
        <source>The password is wrong.</source>
        <translation>The password is wrong.</translation>
    </message>
    <message id="trivex-app-chain-algorithm">
        <source>This computer can't check its signature: it does not know the algorithm.</source>
        <translation>This computer can't check its signature: it does not know the algorithm.</translation>
    </message>
    <message id="trivex-app-chain-all-good">
        <source>All is well up to a root that is trusted on this computer.</source>
        <translation>All is well up to a root that is trusted on this computer.</translation>
    </message>
    <message id="trivex-app-chain-another">
        <source>Ask its holder for another certificate.</source>
        <translation>Ask its holder for another certificate.</translation>
    </message>
    <message id="trivex-app-chain-at-step">
        <source>“%1”: %2</source>
        <translation>“%1”: %2</translation>
    </message>
    <message id="trivex-app-chain-bad">
        <source>Not to be trusted</source>
        <translation>Not to be trusted</translation>
    </message>
    <message id="trivex-app-chain-clock">
        <source>Check the date of this computer.</source>
        <translation>Check the date of this computer.</translation>
    </message>
    <message id="trivex-app-chain-date">
        <source>On the date</source>
        <translation>On the date</translation>
    </message>
    <message id="trivex-app-chain-doubtful">
        <source>With a reservation</source>
        <translation>With a reservation</translation>
    </message>
    <message id="trivex-app-chain-elsewhere">
        <source>Install what OpenSSL needs for this algorithm, or check it on another computer.</source>
        <translation>Install what OpenSSL needs for this algorithm, or check it on another computer.</translation>
    </message>
    <message id="trivex-app-chain-expired">
        <source>It ended on %1.</source>
        <translation>It ended on %1.</translation>
    </message>
    <message id="trivex-app-chain-extension">
        <source>It has a condition that this program does not know.</source>
        <translation>It has a condition that this program does not know.</translation>
    </message>
    <message id="trivex-app-chain-find-issuer">
        <source>Take the certificate from the site of that issuer and import it.</source>
        <translation>Take the certificate from the site of that issuer and import it.</translation>
    </message>
    <message id="trivex-app-chain-good">
        <source>Trusted</source>
        <translation>Trusted</translation>
    </message>
    <message id="trivex-app-chain-issuer-differs">
        <source>The certificate of “%1” that is on this computer has another key than its issuer.</source>
        <translation>The certificate of “%1” that is on this computer has another key than its issuer.</translation>
    </message>
    <message id="trivex-app-chain-issuer-missing">
        <source>The certificate of its issuer “%1” is not on this computer.</source>
        <translation>The certificate of its issuer “%1” is not on this computer.</translation>
    </message>
    <message id="trivex-app-chain-key-of-anybody">
        <source>Everybody can sign in its name: its key protects nothing.</source>
        <translation>Everybody can sign in its name: its key protects nothing.</translation>
    </message>
    <message id="trivex-app-chain-list-expired">
        <source>The list of revoked certificates ended on %1: what was revoked later is not known here.</source>
        <translation>The list of revoked certificates ended on %1: what was revoked later is not known here.</translation>
    </message>
    <message id="trivex-app-chain-list-not-yet">
        <source>The list of revoked certificates is valid from %1 on only.</source>
        <translation>The list of revoked certificates is valid from %1 on only.</translation>
    </message>
    <message id="trivex-app-chain-list-unreadable">
        <source>The list of revoked certificates can't be understood in full, and does not count.</source>
        <translation>The list of revoked certificates can't be understood in full, and does not count.</translation>
    </message>
    <message id="trivex-app-chain-malformed">
        <source>It breaks the rules for certificates.</source>
        <translation>It breaks the rules for certificates.</translation>
    </message>
    <message id="trivex-app-chain-name">
        <source>Its issuer “%1” may not issue certificates for such a name.</source>
        <translation>Its issuer “%1” may not issue certificates for such a name.</translation>
    </message>
    <message id="trivex-app-chain-new-list">
        <source>Save the newest list of its issuer in the folder %1, with a name that ends in “.crl”.</source>
        <translation>Save the newest list of its issuer in the folder %1, with a name that ends in “.crl”.</translation>
    </message>
    <message id="trivex-app-chain-no-authority">
        <source>It may not issue certificates, and has issued one.</source>
        <translation>It may not issue certificates, and has issued one.</translation>
    </message>
    <message id="trivex-app-chain-no-date">
        <source>an unknown date</source>
        <translation>an unknown date</translation>
    </message>
    <message id="trivex-app-chain-not-listed">
        <source>Whether it was revoked was not looked at: no list of its issuer is here.</source>
        <translation>Whether it was revoked was not looked at: no list of its issuer is here.</translation>
    </message>
    <message id="trivex-app-chain-not-yet">
        <source>It is valid from %1 on only.</source>
        <translation>It is valid from %1 on only.</translation>
    </message>
    <message id="trivex-app-chain-other">
        <source>It could not be checked.</source>
        <translation>It could not be checked.</translation>
    </message>
    <message id="trivex-app-chain-purpose">
        <source>It is meant for something else.</source>
        <translation>It is meant for something else.</translation>
    </message>
    <message id="trivex-app-chain-refuse">
        <source>Do not rely on it.</source>
        <translation>Do not rely on it.</translation>
    </message>
    <message id="trivex-app-chain-renew">
        <source>Ask its issuer for a new certificate.</source>
        <translation>Ask its issuer for a new certificate.</translation>
    </message>
    <message id="trivex-app-chain-revoked">
        <source>It is revoked since %1.</source>
        <translation>It is revoked since %1.</translation>
    </message>
    <message id="trivex-app-chain-revoked-later">
        <source>It was not revoked at that time; it is since %1.</source>
        <translation>It was not revoked at that time; it is since %1.</translation>
    </message>
    <message id="trivex-app-chain-root">
        <source>This root is none of those that are trusted on this computer.</source>
        <translation>This root is none of those that are trusted on this computer.</translation>
    </message>
    <message id="trivex-app-chain-running">
        <source>Checking…</source>
        <translation>Checking…</translation>
    </message>
    <message id="trivex-app-chain-self-signed">
        <source>It vouches for itself, and is none of the roots that are trusted on this computer.</source>
        <translation>It vouches for itself, and is none of the roots that are trusted on this computer.</translation>
    </message>
    <message id="trivex-app-chain-show-step">
        <source>Show this certificate</source>
        <translation>Show this certificate</translation>
    </message>
    <message id="trivex-app-chain-signature">
        <source>Its signature is wrong: it was changed, or it is not from its issuer “%1”.</source>
        <translation>Its signature is wrong: it was changed, or it is not from its issuer “%1”.</translation>
    </message>
    <message id="trivex-app-chain-steps">
        <source>The path to the root</source>
        <translation>The path to the root</translation>
    </message>
    <message id="trivex-app-chain-this-file">
        <source>This file</source>
        <translation>This file</translation>
    </message>
    <message id="trivex-app-chain-title">
        <source>Trust</source>
        <translation>Trust</translation>
    </message>
    <message id="trivex-app-chain-today">
        <source>today</source>
        <translation>today</translation>
    </message>
    <message id="trivex-app-chain-too-long">
        <source>The path is too long.</source>
        <translation>The path is too long.</translation>
    </message>
    <message id="trivex-app-chain-too-many">
        <source>There are more authorities below it than it allows.</source>
        <translation>There are more authorities below it than it allows.</translation>
    </message>
    <message id="trivex-app-chain-trust-it">
        <source>If you know whose it is and trust it, import it into your own files.</source>
        <translation>If you know whose it is and trust it, import it into your own files.</translation>
    </message>
    <message id="trivex-app-chain-trusted-root">
        <source>Trusted root</source>
        <translation>Trusted root</translation>
    </message>
    <message id="trivex-app-chain-unknown">
        <source>Can't be checked</source>
        <translation>Can't be checked</translation>
    </message>
    <message id="trivex-app-chain-unreadable">
        <source>The path of this certificate can't be looked for: it can't be read in full.</source>
        <translation>The path of this certificate can't be looked for: it can't be read in full.</translation>
    </message>
    <message id="trivex-app-chain-weak-key">
        <source>Its key is too short to be safe.</source>
        <translation>Its key is too short to be safe.</translation>
    </message>
    <message id="trivex-app-chain-weak-signature">
        <source>It is signed in a way that is no longer safe.</source>
        <translation>It is signed in a way that is no longer safe.</translation>
    </message>
    <message id="trivex-app-chain-with-reason">
        <source>%1 The reason: %2.</source>
        <translation>%1 The reason: %2.</translation>
    </message>
    <message id="trivex-app-chain-wrong-date">
        <source>This is no date. Type it as %1.</source>
        <translation>This is no date. Type it as %1.</translation>
    </message>
</context>
</TS>
