<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The Trivex developers -->
<!-- SPDX-License-Identifier: MIT -->
<TS version="2.1" language="ru_RU">
<context>
    <name></name>
    <message id="plugin-la-unnamed">
        <source>unnamed</source>
        <translation>без имени</translation>
    </message>
    <message id="trivex-la-ellyptic">
        <source>Elliptic curve, %1 bits</source>
        <translation>Эллиптическая кривая, %1 бит</translation>
    </message>
    <message id="trivex-la-rsa">
        <source>RSA, %1 bits</source>
        <translation>RSA, %1 бит</translation>
    </message>
    <message id="trivex-me-hardware">
        <source>Hardware token</source>
        <translation>Аппаратный токен</translation>
    </message>
    <message id="trivex-me-norvel_tee">
        <source>Trusted execution environment</source>
        <translation>Доверенная среда исполнения</translation>
    </message>
    <message id="trivex-me-softhsm">
        <source>Software token</source>
        <translation>Программный токен</translation>
    </message>
    <message id="trivex-p-la-issuer">
        <source>Issuer</source>
        <translation>Издатель</translation>
    </message>
    <message id="trivex-p-la-private_available">
        <source>Available</source>
        <translation>Есть</translation>
    </message>
    <message id="trivex-p-la-private_key">
        <source>Private key</source>
        <translation>Закрытый ключ</translation>
    </message>
    <message id="trivex-p-la-private_key_id">
        <source>Availability</source>
        <translation>Наличие</translation>
    </message>
    <message id="trivex-p-la-private_key_location">
        <source>Location</source>
        <translation>Расположение</translation>
    </message>
    <message id="trivex-p-la-private_key_manufacturer">
        <source>Manufacturer</source>
        <translation>Производитель</translation>
    </message>
    <message id="trivex-p-la-private_not_available">
        <source>Not available</source>
        <translation>Нет</translation>
    </message>
    <message id="trivex-p-la-public_key">
        <source>Public key</source>
        <translation>Открытый ключ</translation>
    </message>
    <message id="trivex-p-la-public_key_Marker">
        <source>Marker</source>
        <translation>Метка</translation>
    </message>
    <message id="trivex-p-la-public_key_algorithm">
        <source>Algorithm</source>
        <translation>Алгоритм</translation>
    </message>
    <message id="trivex-p-la-public_key_id">
        <source>Key identifier</source>
        <translation>Идентификатор ключа</translation>
    </message>
    <message id="trivex-p-la-serial_number">
        <source>Serial number</source>
        <translation>Серийный номер</translation>
    </message>
    <message id="trivex-p-la-sign_alg">
        <source>Signature algorithm</source>
        <translation>Алгоритм подписи</translation>
    </message>
    <message id="trivex-p-la-subject">
        <source>Subject</source>
        <translation>Владелец</translation>
    </message>
    <message id="trivex-p-la-subject_address">
        <source>Address</source>
        <translation>Адрес</translation>
    </message>
    <message id="trivex-p-la-subject_country_code">
        <source>Country code</source>
        <translation>Код страны</translation>
    </message>
    <message id="trivex-p-la-subject_email">
        <source>E-mail</source>
        <translation>Электронная почта</translation>
    </message>
    <message id="trivex-p-la-subject_identification_kind">
        <source>How the identity was checked</source>
        <translation>Способ идентификации</translation>
    </message>
    <message id="trivex-p-la-subject_inn">
        <source>INN (taxpayer number)</source>
        <translation>ИНН</translation>
    </message>
    <message id="trivex-p-la-subject_innle">
        <source>INNLE (company taxpayer number)</source>
        <translation>ИНН юридического лица</translation>
    </message>
    <message id="trivex-p-la-subject_locality">
        <source>City or town</source>
        <translation>Населённый пункт</translation>
    </message>
    <message id="trivex-p-la-subject_name">
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message id="trivex-p-la-subject_ogrn">
        <source>OGRN (company registration number)</source>
        <translation>ОГРН</translation>
    </message>
    <message id="trivex-p-la-subject_ogrnip">
        <source>OGRNIP (sole proprietor registration number)</source>
        <translation>ОГРНИП</translation>
    </message>
    <message id="trivex-p-la-subject_organization">
        <source>Organization</source>
        <translation>Организация</translation>
    </message>
    <message id="trivex-p-la-subject_organization_unit">
        <source>Department</source>
        <translation>Подразделение</translation>
    </message>
    <message id="trivex-p-la-subject_snils">
        <source>SNILS (personal insurance number)</source>
        <translation>СНИЛС</translation>
    </message>
    <message id="trivex-p-la-subject_state">
        <source>State or region</source>
        <translation>Регион</translation>
    </message>
    <message id="trivex-p-la-unknown_signing_alg">
        <source>Unknown signature algorithm</source>
        <translation>Неизвестный алгоритм подписи</translation>
    </message>
    <message id="trivex-p-la-validity">
        <source>Validity</source>
        <translation>Срок действия</translation>
    </message>
    <message id="trivex-p-la-validity_from">
        <source>Valid from</source>
        <translation>Действителен с</translation>
    </message>
    <message id="trivex-p-la-validity_to">
        <source>Valid until</source>
        <translation>Действителен по</translation>
    </message>
    <message id="trivex-p-la-with">
        <source>with</source>
        <translation>с</translation>
    </message>
    <message id="trivex-p-la-without_dest">
        <source>Raw signature without a digest</source>
        <translation>Подпись без хеширования</translation>
    </message>
    <message id="trivex-se-unknown_organization">
        <source>Unknown organization</source>
        <translation>Неизвестная организация</translation>
    </message>
    <message id="trivex-se-unnamed">
        <source>Unnamed</source>
        <translation>Без имени</translation>
    </message>
</context>
</TS>
