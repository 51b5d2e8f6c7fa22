<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The Trivex developers -->
<!-- SPDX-License-Identifier: MIT -->
<TS version="2.1" language="en_US">
<context>
    <name></name>
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
    <message id="trivex-app-about-token">
        <source>There is nothing on this token yet. Import a certificate or make a request.</source>
        <translation>There is nothing on this token yet. Import a certificate or make a request.</translation>
    </message>
    <message id="trivex-app-about-users">
        <source>Certificates from the files in your own certificate folder.</source>
        <translation>Certificates from the files in your own certificate folder.</translation>
    </message>
    <message id="trivex-app-advice-cancelled">
        <source>Nothing was changed. Start again when you like.</source>
        <translation>Nothing was changed. Start again when you like.</translation>
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
    <message id="trivex-app-advice-locked">
        <source>Ask whoever gave out the token to unlock the PIN with the administrator PIN.</source>
        <translation>Ask whoever gave out the token to unlock the PIN with the administrator PIN.</translation>
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
    <message id="trivex-app-advice-pin">
        <source>Start again and type the PIN of this token.</source>
        <translation>Start again and type the PIN of this token.</translation>
    </message>
    <message id="trivex-app-advice-pin-expired">
        <source>Change the PIN with the program that came with the token, then start again.</source>
        <translation>Change the PIN with the program that came with the token, then start again.</translation>
    </message>
    <message id="trivex-app-advice-pin-not-set">
        <source>Set the user PIN with the program that came with the token, then start again.</source>
        <translation>Set the user PIN with the program that came with the token, then start again.</translation>
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
    <message id="trivex-app-attribute-given-name">
        <source>Given name</source>
        <translation>Given name</translation>
    </message>
    <message id="trivex-app-attribute-innle">
        <source>INN of the organization</source>
        <translation>INN of the organization</translation>
    </message>
    <message id="trivex-app-attribute-name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="trivex-app-attribute-ogrn">
        <source>OGRN</source>
        <translation>OGRN</translation>
    </message>
    <message id="trivex-app-attribute-ogrnip">
        <source>OGRNIP</source>
        <translation>OGRNIP</translation>
    </message>
    <message id="trivex-app-attribute-street">
        <source>Street</source>
        <translation>Street</translation>
    </message>
    <message id="trivex-app-attribute-surname">
        <source>Surname</source>
        <translation>Surname</translation>
    </message>
    <message id="trivex-app-attribute-title">
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message id="trivex-app-back">
        <source>Back</source>
        <translation>Back</translation>
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
    <message id="trivex-app-busy-generate">
        <source>Making a key…</source>
        <translation>Making a key…</translation>
    </message>
    <message id="trivex-app-busy-loading">
        <source>Reading the token…</source>
        <translation>Reading the token…</translation>
    </message>
    <message id="trivex-app-busy-remove">
        <source>Removing…</source>
        <translation>Removing…</translation>
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
    <message id="trivex-app-cause-locked">
        <source>The token has locked its PIN after too many wrong tries.</source>
        <translation>The token has locked its PIN after too many wrong tries.</translation>
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
    <message id="trivex-app-copy-report">
        <source>Copy report</source>
        <translation>Copy report</translation>
    </message>
    <message id="trivex-app-create-request">
        <source>Create the request</source>
        <translation>Create the request</translation>
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
    <message id="trivex-app-document-reread">
        <source>The document was changed and has been read again.</source>
        <translation>The document was changed and has been read again.</translation>
    </message>
    <message id="trivex-app-document-type">
        <source>Files of this type can't be signed here. PDF, PNG, JPEG and plain text can.</source>
        <translation>Files of this type can't be signed here. PDF, PNG, JPEG and plain text can.</translation>
    </message>
    <message id="trivex-app-drop-document">
        <source>Drop a document here: PDF, PNG, JPEG or plain text.</source>
        <translation>Drop a document here: PDF, PNG, JPEG or plain text.</translation>
    </message>
    <message id="trivex-app-edit">
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message id="trivex-app-edit-request-title">
        <source>Edit the request</source>
        <translation>Edit the request</translation>
    </message>
    <message id="trivex-app-empty">
        <source>Nothing here yet</source>
        <translation>Nothing here yet</translation>
    </message>
    <message id="trivex-app-error-title">
        <source>That did not work</source>
        <translation>That did not work</translation>
    </message>
    <message id="trivex-app-everything">
        <source>Everything in it</source>
        <translation>Everything in it</translation>
    </message>
    <message id="trivex-app-expiring" numerus="yes">
        <source>%n certificates expire within 30 days</source>
        <translation>
            <numerusform>%n certificate expires within 30 days</numerusform>
            <numerusform>%n certificates expire within 30 days</numerusform>
        </translation>
    </message>
    <message id="trivex-app-export">
        <source>Export…</source>
        <translation>Export…</translation>
    </message>
    <message id="trivex-app-export-failed">
        <source>The file was not exported.</source>
        <translation>The file was not exported.</translation>
    </message>
    <message id="trivex-app-export-title">
        <source>Save as</source>
        <translation>Save as</translation>
    </message>
    <message id="trivex-app-exported">
        <source>Exported to %1</source>
        <translation>Exported to %1</translation>
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
    <message id="trivex-app-field-email">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="trivex-app-field-email-flag">
        <source>This is no e-mail address. Write one in Latin letters, as in name@example.org.</source>
        <translation>This is no e-mail address. Write one in Latin letters, as in name@example.org.</translation>
    </message>
    <message id="trivex-app-field-inn">
        <source>INN</source>
        <translation>INN</translation>
    </message>
    <message id="trivex-app-field-locality">
        <source>City</source>
        <translation>City</translation>
    </message>
    <message id="trivex-app-field-name">
        <source>Name (of the person or service)</source>
        <translation>Name (of the person or service)</translation>
    </message>
    <message id="trivex-app-field-ogrn">
        <source>OGRN or OGRNIP</source>
        <translation>OGRN or OGRNIP</translation>
    </message>
    <message id="trivex-app-field-organization">
        <source>Organization</source>
        <translation>Organization</translation>
    </message>
    <message id="trivex-app-field-snils">
        <source>SNILS</source>
        <translation>SNILS</translation>
    </message>
    <message id="trivex-app-field-state">
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message id="trivex-app-file">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="trivex-app-file-digest">
        <source>Digest (SHA-256)</source>
        <translation>Digest (SHA-256)</translation>
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
    <message id="trivex-app-filter-all">
        <source>All files</source>
        <translation>All files</translation>
    </message>
    <message id="trivex-app-filter-certificates">
        <source>Certificates and bundles</source>
        <translation>Certificates and bundles</translation>
    </message>
    <message id="trivex-app-fingerprints">
        <source>Fingerprints</source>
        <translation>Fingerprints</translation>
    </message>
    <message id="trivex-app-format-der">
        <source>DER, binary</source>
        <translation>DER, binary</translation>
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
    <message id="trivex-app-holder">
        <source>Holder</source>
        <translation>Holder</translation>
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
    <message id="trivex-app-import-partly">
        <source>Only %1 of %2 were imported. What is still ticked is not; start again for it.</source>
        <translation>Only %1 of %2 were imported. What is still ticked is not; start again for it.</translation>
    </message>
    <message id="trivex-app-import-title">
        <source>Import a certificate or bundle</source>
        <translation>Import a certificate or bundle</translation>
    </message>
    <message id="trivex-app-import-to">
        <source>Import to</source>
        <translation>Import to</translation>
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
    <message id="trivex-app-issuer">
        <source>Issuer</source>
        <translation>Issuer</translation>
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
    <message id="trivex-app-key-kind" numerus="yes">
        <source>%1, %n bits</source>
        <translation>
            <numerusform>%1, %n bit</numerusform>
            <numerusform>%1, %n bits</numerusform>
        </translation>
    </message>
    <message id="trivex-app-key-name">
        <source>Key name</source>
        <translation>Key name</translation>
    </message>
    <message id="trivex-app-key-name-hint">
        <source>Your own name for it on the token</source>
        <translation>Your own name for it on the token</translation>
    </message>
    <message id="trivex-app-key-presumed">
        <source>Whether the token has the key of this certificate shows after the PIN is entered.</source>
        <translation>Whether the token has the key of this certificate shows after the PIN is entered.</translation>
    </message>
    <message id="trivex-app-key-unseen">
        <source>Key not seen yet</source>
        <translation>Key not seen yet</translation>
    </message>
    <message id="trivex-app-kind-broken" numerus="yes">
        <source>%n parts of the file are damaged and are left out.</source>
        <translation>
            <numerusform>%n part of the file is damaged and is left out.</numerusform>
            <numerusform>%n parts of the file are damaged and are left out.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-kind-key">
        <source>This is a private key without a certificate. Import a bundle (.p12, .pfx) that holds both.</source>
        <translation>This is a private key without a certificate. Import a bundle (.p12, .pfx) that holds both.</translation>
    </message>
    <message id="trivex-app-kind-list">
        <source>This is a list of revoked certificates. It can be read here; there is nothing to import.</source>
        <translation>This is a list of revoked certificates. It can be read here; there is nothing to import.</translation>
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
    <message id="trivex-app-kind-signature">
        <source>This file is a signature. Open it together with its document, under “Sign and verify”.</source>
        <translation>This file is a signature. Open it together with its document, under “Sign and verify”.</translation>
    </message>
    <message id="trivex-app-list-count">
        <source>Revoked certificates</source>
        <translation>Revoked certificates</translation>
    </message>
    <message id="trivex-app-list-made">
        <source>Issued on</source>
        <translation>Issued on</translation>
    </message>
    <message id="trivex-app-list-next">
        <source>Next update by</source>
        <translation>Next update by</translation>
    </message>
    <message id="trivex-app-loading">
        <source>Reading the stores…</source>
        <translation>Reading the stores…</translation>
    </message>
    <message id="trivex-app-menu">
        <source>Categories</source>
        <translation>Categories</translation>
    </message>
    <message id="trivex-app-new-request">
        <source>New request</source>
        <translation>New request</translation>
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
        <source>The search looks at names, issuers, serial numbers and the digits of INN, SNILS and OGRN.</source>
        <translation>The search looks at names, issuers, serial numbers and the digits of INN, SNILS and OGRN.</translation>
    </message>
    <message id="trivex-app-ok">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="trivex-app-one-document">
        <source>One document at a time: the others were not opened.</source>
        <translation>One document at a time: the others were not opened.</translation>
    </message>
    <message id="trivex-app-only-rsa-keys">
        <source>Only RSA keys can make this signature. Your other keys are not listed.</source>
        <translation>Only RSA keys can make this signature. Your other keys are not listed.</translation>
    </message>
    <message id="trivex-app-open-folder">
        <source>Open the folder</source>
        <translation>Open the folder</translation>
    </message>
    <message id="trivex-app-other-signature">
        <source>Another signature file…</source>
        <translation>Another signature file…</translation>
    </message>
    <message id="trivex-app-pin">
        <source>PIN</source>
        <translation>PIN</translation>
    </message>
    <message id="trivex-app-pin-consent">
        <source>I know that a wrong PIN locks the token</source>
        <translation>I know that a wrong PIN locks the token</translation>
    </message>
    <message id="trivex-app-pin-final">
        <source>This is the last try: a wrong PIN locks the token.</source>
        <translation>This is the last try: a wrong PIN locks the token.</translation>
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
        <source>PIN of %1</source>
        <translation>PIN of %1</translation>
    </message>
    <message id="trivex-app-pin-replaced">
        <source>The question before is over. This is another one: type the PIN of the token named below.</source>
        <translation>The question before is over. This is another one: type the PIN of the token named below.</translation>
    </message>
    <message id="trivex-app-pin-title">
        <source>The token asks for its PIN</source>
        <translation>The token asks for its PIN</translation>
    </message>
    <message id="trivex-app-preview">
        <source>Preview of the picture</source>
        <translation>Preview of the picture</translation>
    </message>
    <message id="trivex-app-profile-company">
        <source>Company (Russia)</source>
        <translation>Company (Russia)</translation>
    </message>
    <message id="trivex-app-profile-mail">
        <source>Protected mail</source>
        <translation>Protected mail</translation>
    </message>
    <message id="trivex-app-profile-person">
        <source>Person (Russia)</source>
        <translation>Person (Russia)</translation>
    </message>
    <message id="trivex-app-profile-server">
        <source>Web server</source>
        <translation>Web server</translation>
    </message>
    <message id="trivex-app-purpose-decrypt">
        <source>to decrypt with a key on it</source>
        <translation>to decrypt with a key on it</translation>
    </message>
    <message id="trivex-app-purpose-generate">
        <source>to make a key on it</source>
        <translation>to make a key on it</translation>
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
    <message id="trivex-app-read-special">
        <source>This is a pipe, a device or a file of the running system. Choose an ordinary file.</source>
        <translation>This is a pipe, a device or a file of the running system. Choose an ordinary file.</translation>
    </message>
    <message id="trivex-app-read-too-big">
        <source>The file is too big: 2 GB and more can't be read here. Compress it or split it.</source>
        <translation>The file is too big: 2 GB and more can't be read here. Compress it or split it.</translation>
    </message>
    <message id="trivex-app-refused">
        <source>The signature does not match this document and key.</source>
        <translation>The signature does not match this document and key.</translation>
    </message>
    <message id="trivex-app-refused-advice">
        <source>The document was changed after signing, or another key signed it. Choose the right key, or ask for the document again.</source>
        <translation>The document was changed after signing, or another key signed it. Choose the right key, or ask for the document again.</translation>
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
    <message id="trivex-app-remove-key-warning">
        <source>The key can't be brought back. Whatever was encrypted for it stays unreadable.</source>
        <translation>The key can't be brought back. Whatever was encrypted for it stays unreadable.</translation>
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
    <message id="trivex-app-row-menu">
        <source>Actions for the selected rows</source>
        <translation>Actions for the selected rows</translation>
    </message>
    <message id="trivex-app-save">
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message id="trivex-app-saved">
        <source>Saved.</source>
        <translation>Saved.</translation>
    </message>
    <message id="trivex-app-search">
        <source>Search by name, issuer, number</source>
        <translation>Search by name, issuer, number</translation>
    </message>
    <message id="trivex-app-search-clear">
        <source>Clear the search</source>
        <translation>Clear the search</translation>
    </message>
    <message id="trivex-app-secret-hide">
        <source>Hide what is typed</source>
        <translation>Hide what is typed</translation>
    </message>
    <message id="trivex-app-secret-show">
        <source>Show what is typed</source>
        <translation>Show what is typed</translation>
    </message>
    <message id="trivex-app-serial">
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message id="trivex-app-settings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="trivex-app-show-details">
        <source>Show details</source>
        <translation>Show details</translation>
    </message>
    <message id="trivex-app-sign-action">
        <source>Sign</source>
        <translation>Sign</translation>
    </message>
    <message id="trivex-app-sign-verify">
        <source>Sign and verify</source>
        <translation>Sign and verify</translation>
    </message>
    <message id="trivex-app-signature-elsewhere">
        <source>Save the signature as…</source>
        <translation>Save the signature as…</translation>
    </message>
    <message id="trivex-app-signature-file">
        <source>Signature file</source>
        <translation>Signature file</translation>
    </message>
    <message id="trivex-app-signature-opened">
        <source>This file is a signature.</source>
        <translation>This file is a signature.</translation>
    </message>
    <message id="trivex-app-signature-opened-advice">
        <source>Now choose the document that it was made for.</source>
        <translation>Now choose the document that it was made for.</translation>
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
    <message id="trivex-app-text-size">
        <source>Text size</source>
        <translation>Text size</translation>
    </message>
    <message id="trivex-app-token">
        <source>Token</source>
        <translation>Token</translation>
    </message>
    <message id="trivex-app-token-absent">
        <source>This token is not inserted.</source>
        <translation>This token is not inserted.</translation>
    </message>
    <message id="trivex-app-token-kind">
        <source>Kind of token</source>
        <translation>Kind of token</translation>
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
    <message id="trivex-app-tokens">
        <source>Tokens</source>
        <translation>Tokens</translation>
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
    <message id="trivex-app-write-read-only">
        <source>This disk is write-protected. Choose another folder.</source>
        <translation>This disk is write-protected. Choose another folder.</translation>
    </message>
    <message id="trivex-console-about">
        <source>Certificates, keys and requests</source>
        <translation>Certificates, keys and requests</translation>
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
    <message id="trivex-console-file">
        <source>file</source>
        <translation>file</translation>
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
        <source>A module has not answered within a minute: its tokens are missing here.</source>
        <translation>A module has not answered within a minute: its tokens are missing here.</translation>
    </message>
    <message id="trivex-console-json">
        <source>Answer in JSON (UTF-8), for programs.</source>
        <translation>Answer in JSON (UTF-8), for programs.</translation>
    </message>
    <message id="trivex-console-list">
        <source>List the certificates of the tokens, of your own store and of the system.</source>
        <translation>List the certificates of the tokens, of your own store and of the system.</translation>
    </message>
    <message id="trivex-console-needs-file">
        <source>%1 needs a file.</source>
        <translation>%1 needs a file.</translation>
    </message>
    <message id="trivex-console-no-file">
        <source>There is no such file.</source>
        <translation>There is no such file.</translation>
    </message>
    <message id="trivex-console-no-terminal">
        <source>is a bundle: its password is asked for at a terminal, or see --password-file</source>
        <translation>is a bundle: its password is asked for at a terminal, or see --password-file</translation>
    </message>
    <message id="trivex-console-no-work">
        <source>--json and --password-file go with --list or --show.</source>
        <translation>--json and --password-file go with --list or --show.</translation>
    </message>
    <message id="trivex-console-one-work">
        <source>One work at a time: --list and --show exclude each other.</source>
        <translation>One work at a time: --list and --show exclude each other.</translation>
    </message>
    <message id="trivex-console-password">
        <source>Password of %1:</source>
        <translation>Password of %1:</translation>
    </message>
    <message id="trivex-console-password-file">
        <source>Take the password of a bundle from the first line of this file.</source>
        <translation>Take the password of a bundle from the first line of this file.</translation>
    </message>
    <message id="trivex-console-raw-signature">
        <source>is a signature and nothing else</source>
        <translation>is a signature and nothing else</translation>
    </message>
    <message id="trivex-console-reading">
        <source>Reading the tokens…</source>
        <translation>Reading the tokens…</translation>
    </message>
    <message id="trivex-console-show">
        <source>Show everything in the files: certificates, requests, lists, keys and bundles.</source>
        <translation>Show everything in the files: certificates, requests, lists, keys and bundles.</translation>
    </message>
    <message id="trivex-console-store" numerus="yes">
        <source>%1: %n certificates</source>
        <translation>
            <numerusform>%1: %n certificate</numerusform>
            <numerusform>%1: %n certificates</numerusform>
        </translation>
    </message>
    <message id="trivex-console-takes-no-file">
        <source>%1 takes no file.</source>
        <translation>%1 takes no file.</translation>
    </message>
    <message id="trivex-console-with-key">
        <source>with its key</source>
        <translation>with its key</translation>
    </message>
    <message id="trivex-console-wrong-password">
        <source>The password is wrong.</source>
        <translation>The password is wrong.</translation>
    </message>
</context>
</TS>
