<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The Trivex developers -->
<!-- SPDX-License-Identifier: MIT -->
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="plugin-la-unnamed">
        <source>unnamed</source>
        <translation>unnamed</translation>
    </message>
    <message id="trivex-la-ellyptic">
        <source>Elliptic curve, %1 bits</source>
        <translation>Elliptic curve, %1 bits</translation>
    </message>
    <message id="trivex-la-rsa">
        <source>RSA, %1 bits</source>
        <translation>RSA, %1 bits</translation>
    </message>
    <message id="trivex-me-hardware">
        <source>Hardware token</source>
        <translation>Hardware token</translation>
    </message>
    <message id="trivex-me-norvel_tee">
        <source>Trusted execution environment</source>
        <translation>Trusted execution environment</translation>
    </message>
    <message id="trivex-me-softhsm">
        <source>Software token</source>
        <translation>Software token</translation>
    </message>
    <message id="trivex-p-la-issuer">
        <source>Issuer</source>
        <translation>Issuer</translation>
    </message>
    <message id="trivex-p-la-private_available">
        <source>Available</source>
        <translation>Available</translation>
    </message>
    <message id="trivex-p-la-private_key">
        <source>Private key</source>
        <translation>Private key</translation>
    </message>
    <message id="trivex-p-la-private_key_id">
        <source>Availability</source>
        <translation>Availability</translation>
    </message>
    <message id="trivex-p-la-private_key_location">
        <source>Location</source>
        <translation>Location</translation>
    </message>
    <message id="trivex-p-la-private_key_manufacturer">
        <source>Manufacturer</source>
        <translation>Manufacturer</translation>
    </message>
    <message id="trivex-p-la-private_not_available">
        <source>Not available</source>
        <translation>Not available</translation>
    </message>
    <message id="trivex-p-la-public_key">
        <source>Public key</source>
        <translation>Public key</translation>
    </message>
    <message id="trivex-p-la-public_key_Marker">
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message id="trivex-p-la-public_key_algorithm">
        <source>Algorithm</source>
        <translation>Algorithm</translation>
    </message>
    <message id="trivex-p-la-public_key_id">
        <source>Key identifier</source>
        <translation>Key identifier</translation>
    </message>
    <message id="trivex-p-la-serial_number">
        <source>Serial number</source>
        <translation>Serial number</translation>
    </message>
    <message id="trivex-p-la-sign_alg">
        <source>Signature algorithm</source>
        <translation>Signature algorithm</translation>
    </message>
    <message id="trivex-p-la-subject">
        <source>Subject</source>
        <translation>Subject</translation>
    </message>
    <message id="trivex-p-la-subject_address">
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message id="trivex-p-la-subject_country_code">
        <source>Country code</source>
        <translation>Country code</translation>
    </message>
    <message id="trivex-p-la-subject_email">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="trivex-p-la-subject_identification_kind">
        <source>How the identity was checked</source>
        <translation>How the identity was checked</translation>
    </message>
    <message id="trivex-p-la-subject_inn">
        <source>INN (taxpayer number)</source>
        <translation>INN (taxpayer number)</translation>
    </message>
    <message id="trivex-p-la-subject_innle">
        <source>INNLE (company taxpayer number)</source>
        <translation>INNLE (company taxpayer number)</translation>
    </message>
    <message id="trivex-p-la-subject_locality">
        <source>City or town</source>
        <translation>City or town</translation>
    </message>
    <message id="trivex-p-la-subject_name">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="trivex-p-la-subject_ogrn">
        <source>OGRN (company registration number)</source>
        <translation>OGRN (company registration number)</translation>
    </message>
    <message id="trivex-p-la-subject_ogrnip">
        <source>OGRNIP (sole proprietor registration number)</source>
        <translation>OGRNIP (sole proprietor registration number)</translation>
    </message>
    <message id="trivex-p-la-subject_organization">
        <source>Organization</source>
        <translation>Organization</translation>
    </message>
    <message id="trivex-p-la-subject_organization_unit">
        <source>Department</source>
        <translation>Department</translation>
    </message>
    <message id="trivex-p-la-subject_snils">
        <source>SNILS (personal insurance number)</source>
        <translation>SNILS (personal insurance number)</translation>
    </message>
    <message id="trivex-p-la-subject_state">
        <source>State or region</source>
        <translation>State or region</translation>
    </message>
    <message id="trivex-p-la-unknown_signing_alg">
        <source>Unknown signature algorithm</source>
        <translation>Unknown signature algorithm</translation>
    </message>
    <message id="trivex-p-la-validity">
        <source>Validity</source>
        <translation>Validity</translation>
    </message>
    <message id="trivex-p-la-validity_from">
        <source>Valid from</source>
        <translation>Valid from</translation>
    </message>
    <message id="trivex-p-la-validity_to">
        <source>Valid until</source>
        <translation>Valid until</translation>
    </message>
    <message id="trivex-p-la-with">
        <source>with</source>
        <translation>with</translation>
    </message>
    <message id="trivex-p-la-without_dest">
        <source>Raw signature without a digest</source>
        <translation>Raw signature without a digest</translation>
    </message>
    <message id="trivex-se-unknown_organization">
        <source>Unknown organization</source>
        <translation>Unknown organization</translation>
    </message>
    <message id="trivex-se-unnamed">
        <source>Unnamed</source>
        <translation>Unnamed</translation>
    </message>
</context>
</TS>
