<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The Trivex developers -->
<!-- SPDX-License-Identifier: MIT -->
<TS version="2.1" language="ru_RU">
<context>
    <name></name>
    <message id="trivex-app-ability-curves">
        <source>Elliptic curves</source>
        <translation>Эллиптические кривые</translation>
    </message>
    <message id="trivex-app-ability-decrypts">
        <source>decrypts</source>
        <translation>расшифровывает</translation>
    </message>
    <message id="trivex-app-ability-edwards">
        <source>Ed25519</source>
        <translation>Ed25519</translation>
    </message>
    <message id="trivex-app-ability-gost">
        <source>GOST R 34.10</source>
        <translation>ГОСТ Р 34.10</translation>
    </message>
    <message id="trivex-app-ability-makes">
        <source>makes keys</source>
        <translation>создаёт ключи</translation>
    </message>
    <message id="trivex-app-ability-rsa">
        <source>RSA</source>
        <translation>RSA</translation>
    </message>
    <message id="trivex-app-ability-signs">
        <source>signs</source>
        <translation>подписывает</translation>
    </message>
    <message id="trivex-app-ability-sizes">
        <source>%1, %2 to %3 bits</source>
        <translation>%1, от %2 до %3 бит</translation>
    </message>
    <message id="trivex-app-about-others">
        <source>Certificates of other people and services, and of issuers in between, on tokens and in your files.</source>
        <translation>Сертификаты других людей, служб и промежуточных центров на токенах и в ваших файлах.</translation>
    </message>
    <message id="trivex-app-about-personal">
        <source>Certificates whose key is on one of your tokens. Insert a token, import a bundle or make a request.</source>
        <translation>Сертификаты, ключ которых хранится на вашем токене. Вставьте токен, импортируйте контейнер или создайте запрос.</translation>
    </message>
    <message id="trivex-app-about-requests">
        <source>Requests that wait for their certificate. Make one, send it to a certification authority and import what comes back.</source>
        <translation>Запросы, которые ждут своего сертификата. Создайте запрос, отправьте его в удостоверяющий центр и импортируйте ответ.</translation>
    </message>
    <message id="trivex-app-about-roots">
        <source>Root certificates that you added yourself.</source>
        <translation>Корневые сертификаты, которые вы добавили сами.</translation>
    </message>
    <message id="trivex-app-about-system">
        <source>Root certificates that this system trusts. They are managed by the system.</source>
        <translation>Корневые сертификаты, которым доверяет система. Ими управляет сама система.</translation>
    </message>
    <message id="trivex-app-about-this-token">
        <source>About this token</source>
        <translation>Об этом токене</translation>
    </message>
    <message id="trivex-app-about-token">
        <source>There is nothing on this token yet. Import a certificate or make a request.</source>
        <translation>На этом токене пока ничего нет. Импортируйте сертификат или создайте запрос.</translation>
    </message>
    <message id="trivex-app-about-users">
        <source>Certificates from the files in your own certificate folder.</source>
        <translation>Сертификаты из файлов вашей папки сертификатов.</translation>
    </message>
    <message id="trivex-app-access-issuers">
        <source>Certificate of the issuer</source>
        <translation>Сертификат издателя</translation>
    </message>
    <message id="trivex-app-admin-failed">
        <source>The token or its reader reported a fault (%1). Insert the token again and retry.</source>
        <translation>Токен или считыватель сообщил о сбое (%1). Вставьте токен заново и повторите.</translation>
    </message>
    <message id="trivex-app-admin-gone">
        <source>The token was removed. Insert it and start again.</source>
        <translation>Токен извлечён. Вставьте его и начните заново.</translation>
    </message>
    <message id="trivex-app-admin-half">
        <source>The token is empty now, but has no PIN yet. Set it with the administrator PIN.</source>
        <translation>Токен теперь пуст, но PIN‑кода у него ещё нет. Задайте его с помощью PIN‑кода администратора.</translation>
    </message>
    <message id="trivex-app-admin-left">
        <source>What was begun on “%1” has failed.</source>
        <translation>Операция, начатая на токене «%1», не удалась.</translation>
    </message>
    <message id="trivex-app-admin-length">
        <source>Length of the PIN: %1 to %2 characters.</source>
        <translation>Длина PIN‑кода: от %1 до %2 знаков.</translation>
    </message>
    <message id="trivex-app-admin-loss">
        <source>Certificates on it: %1. Keys on it: %2.</source>
        <translation>Сертификатов на нём: %1, ключей: %2.</translation>
    </message>
    <message id="trivex-app-admin-loss-hidden">
        <source>There may be more keys, which show only after the PIN.</source>
        <translation>Могут быть и другие ключи: их видно только после ввода PIN‑кода.</translation>
    </message>
    <message id="trivex-app-admin-loss-unknown">
        <source>What is on it could not be read yet.</source>
        <translation>Что на нём записано, прочитать пока не удалось.</translation>
    </message>
    <message id="trivex-app-admin-no-pin-yet">
        <source>There is no PIN yet that could be changed. Set it with the administrator PIN.</source>
        <translation>PIN‑кода ещё нет, менять нечего. Задайте его с помощью PIN‑кода администратора.</translation>
    </message>
    <message id="trivex-app-admin-not-supported">
        <source>The token lets no program do this. Use the program that came with it.</source>
        <translation>Токен не позволяет этого сторонним программам. Воспользуйтесь программой, которая шла с токеном.</translation>
    </message>
    <message id="trivex-app-admin-officer-final">
        <source>This is the last try: a wrong administrator PIN locks it for good.</source>
        <translation>Это последняя попытка: неверный PIN‑код администратора заблокирует его навсегда.</translation>
    </message>
    <message id="trivex-app-admin-officer-locked">
        <source>The administrator PIN is locked. Ask whoever gave out the token.</source>
        <translation>PIN‑код администратора заблокирован. Обратитесь к тому, кто выдал токен.</translation>
    </message>
    <message id="trivex-app-admin-officer-low">
        <source>A wrong administrator PIN was given before. After several wrong ones it is locked.</source>
        <translation>Ранее уже вводили неверный PIN‑код администратора. После нескольких ошибок он блокируется.</translation>
    </message>
    <message id="trivex-app-admin-shortest">
        <source>Length of the PIN: at least %1.</source>
        <translation>Длина PIN‑кода: не меньше %1.</translation>
    </message>
    <message id="trivex-app-admin-wrong-officer-pin">
        <source>The administrator PIN is not right. Type it again.</source>
        <translation>PIN‑код администратора неверен. Введите его ещё раз.</translation>
    </message>
    <message id="trivex-app-admin-wrong-pin">
        <source>The PIN is not right. Type it again.</source>
        <translation>PIN‑код неверен. Введите его ещё раз.</translation>
    </message>
    <message id="trivex-app-advice-cancelled">
        <source>Nothing was changed. Start again when you like.</source>
        <translation>Ничего не изменилось. Начните заново, когда будет удобно.</translation>
    </message>
    <message id="trivex-app-advice-cannot-decrypt">
        <source>Ask for the document once more, encrypted for another certificate of yours.</source>
        <translation>Попросите прислать документ ещё раз, зашифрованный для другого вашего сертификата.</translation>
    </message>
    <message id="trivex-app-advice-cannot-sign">
        <source>Choose a key of another kind, or one on another token.</source>
        <translation>Выберите ключ другого вида или ключ на другом токене.</translation>
    </message>
    <message id="trivex-app-advice-cannot-write">
        <source>Nothing was written. Choose another token.</source>
        <translation>Ничего не записано. Выберите другой токен.</translation>
    </message>
    <message id="trivex-app-advice-data">
        <source>Choose another key: this one can't be used for what was asked of it.</source>
        <translation>Выберите другой ключ: этот для такой операции не подходит.</translation>
    </message>
    <message id="trivex-app-advice-device">
        <source>Take the token out, insert it again and retry. If it stays so, copy the report.</source>
        <translation>Извлеките токен, вставьте его снова и повторите. Если не поможет, скопируйте отчёт.</translation>
    </message>
    <message id="trivex-app-advice-full">
        <source>Remove certificates that are no longer needed, or use another token.</source>
        <translation>Удалите ненужные сертификаты или возьмите другой токен.</translation>
    </message>
    <message id="trivex-app-advice-in-use">
        <source>Close the other programs that work with this token, then start again.</source>
        <translation>Закройте другие программы, которые работают с этим токеном, и начните заново.</translation>
    </message>
    <message id="trivex-app-advice-key-ambiguous">
        <source>Nothing was removed. Give them other names with the program of the token's maker.</source>
        <translation>Ничего не удалено. Дайте им разные имена в программе изготовителя токена.</translation>
    </message>
    <message id="trivex-app-advice-key-names">
        <source>Give them other names with the program of the token's maker, then start again.</source>
        <translation>Дайте им разные имена в программе изготовителя токена и начните заново.</translation>
    </message>
    <message id="trivex-app-advice-key-stays">
        <source>Nothing was written. Use the token itself, or make a new key where it is needed.</source>
        <translation>Ничего не записано. Пользуйтесь самим токеном или создайте новый ключ там, где он нужен.</translation>
    </message>
    <message id="trivex-app-advice-last-try">
        <source>Make sure of the PIN, agree to the last try, then type it again.</source>
        <translation>Проверьте PIN‑код, согласитесь на последнюю попытку и введите его ещё раз.</translation>
    </message>
    <message id="trivex-app-advice-locked">
        <source>Ask whoever gave out the token to unlock the PIN with the administrator PIN.</source>
        <translation>Обратитесь к тому, кто выдал токен: он разблокирует PIN‑код PIN‑кодом администратора.</translation>
    </message>
    <message id="trivex-app-advice-new-pin">
        <source>Choose another one: of another length, or of digits alone.</source>
        <translation>Придумайте другой: иной длины или только из цифр.</translation>
    </message>
    <message id="trivex-app-advice-no-private-key">
        <source>Choose another certificate, or the token on which its key was made.</source>
        <translation>Выберите другой сертификат или вставьте токен, на котором создан его ключ.</translation>
    </message>
    <message id="trivex-app-advice-not-found">
        <source>Check that the right token is inserted.</source>
        <translation>Проверьте, тот ли токен вставлен.</translation>
    </message>
    <message id="trivex-app-advice-not-logged-in">
        <source>Take the token out and insert it again. If it stays so, have it set up anew.</source>
        <translation>Извлеките токен и вставьте его снова. Если не поможет, попросите настроить токен заново.</translation>
    </message>
    <message id="trivex-app-advice-not-offered">
        <source>Use the program that came with the token.</source>
        <translation>Воспользуйтесь программой из комплекта токена.</translation>
    </message>
    <message id="trivex-app-advice-pin">
        <source>Start again and type the PIN of this token.</source>
        <translation>Начните заново и введите PIN‑код этого токена.</translation>
    </message>
    <message id="trivex-app-advice-pin-expired">
        <source>Change the PIN, then start again.</source>
        <translation>Смените PIN‑код и начните заново.</translation>
    </message>
    <message id="trivex-app-advice-pin-not-set">
        <source>Set it with the administrator PIN, then start again.</source>
        <translation>Задайте его с помощью PIN‑кода администратора и начните заново.</translation>
    </message>
    <message id="trivex-app-advice-read-only">
        <source>Choose another token, or have the protection removed.</source>
        <translation>Выберите другой токен или снимите защиту.</translation>
    </message>
    <message id="trivex-app-advice-removed">
        <source>Insert the token and start again. Nothing half-done was left on it.</source>
        <translation>Вставьте токен и начните заново. Незавершённых записей на нём не осталось.</translation>
    </message>
    <message id="trivex-app-advice-unsupported">
        <source>Choose another algorithm or another token.</source>
        <translation>Выберите другой алгоритм или другой токен.</translation>
    </message>
    <message id="trivex-app-advice-wrong-key-kind">
        <source>Choose an RSA key.</source>
        <translation>Выберите ключ RSA.</translation>
    </message>
    <message id="trivex-app-algorithm">
        <source>Algorithm</source>
        <translation>Алгоритм</translation>
    </message>
    <message id="trivex-app-and-more" numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>и ещё %n</numerusform>
            <numerusform>и ещё %n</numerusform>
            <numerusform>и ещё %n</numerusform>
        </translation>
    </message>
    <message id="trivex-app-another-request">
        <source>Another request</source>
        <translation>Ещё один запрос</translation>
    </message>
    <message id="trivex-app-arrived">
        <source>The certificate for “%1” has arrived; its request is done.</source>
        <translation>Пришёл сертификат для «%1»; запрос выполнен.</translation>
    </message>
    <message id="trivex-app-attribute-domain">
        <source>Domain component</source>
        <translation>Компонент домена</translation>
    </message>
    <message id="trivex-app-attribute-generation">
        <source>Generation</source>
        <translation>Поколение</translation>
    </message>
    <message id="trivex-app-attribute-given-name">
        <source>Given name</source>
        <translation>Имя и отчество</translation>
    </message>
    <message id="trivex-app-attribute-name">
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message id="trivex-app-attribute-ogrn">
        <source>OGRN</source>
        <translation>ОГРН</translation>
    </message>
    <message id="trivex-app-attribute-organization-id">
        <source>Identifier of the organization</source>
        <translation>Идентификатор организации</translation>
    </message>
    <message id="trivex-app-attribute-registration-country">
        <source>Country of registration</source>
        <translation>Страна регистрации</translation>
    </message>
    <message id="trivex-app-attribute-registration-locality">
        <source>Place of registration</source>
        <translation>Место регистрации</translation>
    </message>
    <message id="trivex-app-attribute-registration-state">
        <source>Region of registration</source>
        <translation>Регион регистрации</translation>
    </message>
    <message id="trivex-app-attribute-serial">
        <source>Serial number in the name</source>
        <translation>Серийный номер в имени</translation>
    </message>
    <message id="trivex-app-attribute-street">
        <source>Street</source>
        <translation>Улица, дом</translation>
    </message>
    <message id="trivex-app-attribute-surname">
        <source>Surname</source>
        <translation>Фамилия</translation>
    </message>
    <message id="trivex-app-attribute-unstructured">
        <source>Unstructured name</source>
        <translation>Неструктурированное имя</translation>
    </message>
    <message id="trivex-app-attributes">
        <source>Attributes</source>
        <translation>Атрибуты</translation>
    </message>
    <message id="trivex-app-back">
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message id="trivex-app-basic-authority">
        <source>Certification authority</source>
        <translation>Удостоверяющий центр</translation>
    </message>
    <message id="trivex-app-basic-depth">
        <source>Authorities below it at most</source>
        <translation>Центров под ним не больше</translation>
    </message>
    <message id="trivex-app-bit-number">
        <source>bit %1</source>
        <translation>бит %1</translation>
    </message>
    <message id="trivex-app-bits">
        <source>bits</source>
        <translation>бит</translation>
    </message>
    <message id="trivex-app-bundle-ask">
        <source>This bundle is protected by a password.</source>
        <translation>Этот контейнер защищён паролем.</translation>
    </message>
    <message id="trivex-app-bundle-decode">
        <source>This bundle can't be read: it is damaged or uses an encryption that this computer does not know. A wrong password is not the reason. Ask for it to be exported again.</source>
        <translation>Контейнер не читается: он повреждён или зашифрован способом, который этот компьютер не знает. Дело не в пароле. Попросите экспортировать контейнер заново.</translation>
    </message>
    <message id="trivex-app-bundle-open">
        <source>Open</source>
        <translation>Открыть</translation>
    </message>
    <message id="trivex-app-bundle-opening">
        <source>Opening the bundle…</source>
        <translation>Контейнер открывается…</translation>
    </message>
    <message id="trivex-app-bundle-password">
        <source>The password is not right. Check the keyboard layout and type it again.</source>
        <translation>Неверный пароль. Проверьте раскладку клавиатуры и введите его ещё раз.</translation>
    </message>
    <message id="trivex-app-bundle-password-field">
        <source>Password of the bundle</source>
        <translation>Пароль контейнера</translation>
    </message>
    <message id="trivex-app-busy-decrypt">
        <source>Decrypting…</source>
        <translation>Расшифрование…</translation>
    </message>
    <message id="trivex-app-busy-export">
        <source>Copying the private key…</source>
        <translation>Копирование закрытого ключа…</translation>
    </message>
    <message id="trivex-app-busy-generate">
        <source>Making a key…</source>
        <translation>Создаётся ключ…</translation>
    </message>
    <message id="trivex-app-busy-initialise">
        <source>Initialising the token…</source>
        <translation>Токен инициализируется…</translation>
    </message>
    <message id="trivex-app-busy-loading">
        <source>Reading the token…</source>
        <translation>Чтение токена…</translation>
    </message>
    <message id="trivex-app-busy-remove">
        <source>Removing…</source>
        <translation>Удаление…</translation>
    </message>
    <message id="trivex-app-busy-set-pin">
        <source>Setting the PIN…</source>
        <translation>Задаётся PIN‑код…</translation>
    </message>
    <message id="trivex-app-busy-sign">
        <source>Signing…</source>
        <translation>Подписание…</translation>
    </message>
    <message id="trivex-app-busy-verify">
        <source>Checking…</source>
        <translation>Проверка…</translation>
    </message>
    <message id="trivex-app-busy-write">
        <source>Writing…</source>
        <translation>Запись…</translation>
    </message>
    <message id="trivex-app-bytes" numerus="yes">
        <source>%n bytes</source>
        <translation>
            <numerusform>%n байт</numerusform>
            <numerusform>%n байта</numerusform>
            <numerusform>%n байт</numerusform>
        </translation>
    </message>
    <message id="trivex-app-bytes-in-all" numerus="yes">
        <source>%n bytes in all</source>
        <translation>
            <numerusform>всего %n байт</numerusform>
            <numerusform>всего %n байта</numerusform>
            <numerusform>всего %n байт</numerusform>
        </translation>
    </message>
    <message id="trivex-app-cancel">
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message id="trivex-app-categories">
        <source>Categories</source>
        <translation>Разделы</translation>
    </message>
    <message id="trivex-app-category-others">
        <source>Others</source>
        <translation>Прочие</translation>
    </message>
    <message id="trivex-app-category-personal">
        <source>Personal</source>
        <translation>Личные</translation>
    </message>
    <message id="trivex-app-category-requests">
        <source>Requests</source>
        <translation>Запросы</translation>
    </message>
    <message id="trivex-app-category-roots">
        <source>Roots</source>
        <translation>Корневые</translation>
    </message>
    <message id="trivex-app-category-system">
        <source>System</source>
        <translation>Системные</translation>
    </message>
    <message id="trivex-app-category-users">
        <source>My files</source>
        <translation>Мои файлы</translation>
    </message>
    <message id="trivex-app-cause-cancelled">
        <source>The operation was stopped.</source>
        <translation>Операция остановлена.</translation>
    </message>
    <message id="trivex-app-cause-cannot-decrypt">
        <source>The token can't decrypt with this key.</source>
        <translation>Токен не может расшифровать этим ключом.</translation>
    </message>
    <message id="trivex-app-cause-cannot-export">
        <source>The token does not hand over keys of this kind.</source>
        <translation>Токен не отдаёт ключи такого вида.</translation>
    </message>
    <message id="trivex-app-cause-cannot-sign">
        <source>The token can't make this signature with this key.</source>
        <translation>Токен не может создать этим ключом такую подпись.</translation>
    </message>
    <message id="trivex-app-cause-cannot-write">
        <source>The token takes no keys or certificates of this kind or size.</source>
        <translation>Токен не принимает ключи и сертификаты такого вида или размера.</translation>
    </message>
    <message id="trivex-app-cause-data">
        <source>The token did not accept the data.</source>
        <translation>Токен не принял данные.</translation>
    </message>
    <message id="trivex-app-cause-device">
        <source>The token or its reader reported a fault.</source>
        <translation>Токен или считыватель сообщил о неисправности.</translation>
    </message>
    <message id="trivex-app-cause-full">
        <source>There is no room left on the token.</source>
        <translation>На токене не осталось места.</translation>
    </message>
    <message id="trivex-app-cause-in-use">
        <source>Another program is using the token.</source>
        <translation>Токен занят другой программой.</translation>
    </message>
    <message id="trivex-app-cause-key-ambiguous">
        <source>Several keys have the same name and id: which one is meant can't be told.</source>
        <translation>У нескольких ключей одинаковые имя и идентификатор: понять, о каком речь, нельзя.</translation>
    </message>
    <message id="trivex-app-cause-key-stays">
        <source>The private key never leaves the token.</source>
        <translation>Закрытый ключ не покидает токен.</translation>
    </message>
    <message id="trivex-app-cause-last-try">
        <source>Only one try is left: a wrong PIN locks the token.</source>
        <translation>Осталась одна попытка: неверный PIN‑код заблокирует токен.</translation>
    </message>
    <message id="trivex-app-cause-locked">
        <source>The token has locked its PIN after too many wrong tries.</source>
        <translation>Токен заблокировал PIN‑код после нескольких неверных попыток.</translation>
    </message>
    <message id="trivex-app-cause-new-pin">
        <source>The token does not accept the new PIN.</source>
        <translation>Токен не принимает новый PIN‑код.</translation>
    </message>
    <message id="trivex-app-cause-no-pin">
        <source>No PIN was given.</source>
        <translation>PIN‑код не введён.</translation>
    </message>
    <message id="trivex-app-cause-no-private-key">
        <source>The token holds no private key for this certificate.</source>
        <translation>На токене нет закрытого ключа для этого сертификата.</translation>
    </message>
    <message id="trivex-app-cause-not-found">
        <source>The key or certificate is no longer on the token.</source>
        <translation>Ключа или сертификата больше нет на токене.</translation>
    </message>
    <message id="trivex-app-cause-not-logged-in">
        <source>The token wants a login, but does not let anybody log in.</source>
        <translation>Токен требует входа, но войти не даёт.</translation>
    </message>
    <message id="trivex-app-cause-not-offered">
        <source>The token does not offer this.</source>
        <translation>Токен этого не умеет.</translation>
    </message>
    <message id="trivex-app-cause-pin-expired">
        <source>The PIN of the token has to be changed first.</source>
        <translation>Сначала нужно сменить PIN‑код токена.</translation>
    </message>
    <message id="trivex-app-cause-pin-not-set">
        <source>The token has no PIN for its user yet.</source>
        <translation>На токене ещё не задан PIN‑код пользователя.</translation>
    </message>
    <message id="trivex-app-cause-read-only">
        <source>The token is write-protected.</source>
        <translation>Токен защищён от записи.</translation>
    </message>
    <message id="trivex-app-cause-removed">
        <source>The token was removed.</source>
        <translation>Токен извлечён.</translation>
    </message>
    <message id="trivex-app-cause-unsupported">
        <source>The token does not know this kind or size of key.</source>
        <translation>Токен не поддерживает ключи такого вида или размера.</translation>
    </message>
    <message id="trivex-app-cause-wrong-key-kind">
        <source>This key can't make this kind of signature.</source>
        <translation>Этим ключом нельзя создать подпись такого вида.</translation>
    </message>
    <message id="trivex-app-cause-wrong-pin">
        <source>The PIN is not right.</source>
        <translation>Неверный PIN‑код.</translation>
    </message>
    <message id="trivex-app-certificates">
        <source>Certificates</source>
        <translation>Сертификаты</translation>
    </message>
    <message id="trivex-app-chain-list-not-signed">
        <source>A list of revoked certificates in the name of its issuer is not signed by that issuer, and does not count.</source>
        <translation>Список отозванных сертификатов, выпущенный от имени издателя, им не подписан и не учитывается.</translation>
    </message>
    <message id="trivex-app-chain-purpose-any">
        <source>Any purpose</source>
        <translation>Для любой цели</translation>
    </message>
    <message id="trivex-app-chain-purpose-client">
        <source>TLS client</source>
        <translation>Клиент TLS</translation>
    </message>
    <message id="trivex-app-chain-purpose-code">
        <source>Code signing</source>
        <translation>Подпись программ</translation>
    </message>
    <message id="trivex-app-chain-purpose-label">
        <source>To be used for</source>
        <translation>Для чего нужен</translation>
    </message>
    <message id="trivex-app-chain-purpose-mail">
        <source>Protected e-mail</source>
        <translation>Защищённая почта</translation>
    </message>
    <message id="trivex-app-chain-purpose-server">
        <source>TLS server</source>
        <translation>Сервер TLS</translation>
    </message>
    <message id="trivex-app-change">
        <source>Change</source>
        <translation>Сменить</translation>
    </message>
    <message id="trivex-app-change-officer-pin">
        <source>Change administrator PIN…</source>
        <translation>Сменить PIN‑код администратора…</translation>
    </message>
    <message id="trivex-app-change-officer-pin-title">
        <source>Change the administrator PIN</source>
        <translation>Смена PIN‑кода администратора</translation>
    </message>
    <message id="trivex-app-change-pin">
        <source>Change PIN…</source>
        <translation>Сменить PIN‑код…</translation>
    </message>
    <message id="trivex-app-change-pin-title">
        <source>Change the PIN</source>
        <translation>Смена PIN‑кода</translation>
    </message>
    <message id="trivex-app-choose-all">
        <source>Select all</source>
        <translation>Выбрать все</translation>
    </message>
    <message id="trivex-app-choose-file">
        <source>Choose a file…</source>
        <translation>Выбрать файл…</translation>
    </message>
    <message id="trivex-app-choose-other">
        <source>Choose another file…</source>
        <translation>Выбрать другой файл…</translation>
    </message>
    <message id="trivex-app-chosen" numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>Выбрана %n строка</numerusform>
            <numerusform>Выбрано %n строки</numerusform>
            <numerusform>Выбрано %n строк</numerusform>
        </translation>
    </message>
    <message id="trivex-app-clear-search">
        <source>Clear the search</source>
        <translation>Сбросить поиск</translation>
    </message>
    <message id="trivex-app-close">
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message id="trivex-app-colours">
        <source>Appearance</source>
        <translation>Оформление</translation>
    </message>
    <message id="trivex-app-colours-dark">
        <source>Dark</source>
        <translation>Тёмное</translation>
    </message>
    <message id="trivex-app-colours-light">
        <source>Light</source>
        <translation>Светлое</translation>
    </message>
    <message id="trivex-app-colours-system">
        <source>As the system</source>
        <translation>Как в системе</translation>
    </message>
    <message id="trivex-app-copied">
        <source>Copied</source>
        <translation>Скопировано</translation>
    </message>
    <message id="trivex-app-copy-all">
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message id="trivex-app-copy-part">
        <source>Copy the selected part</source>
        <translation>Копировать выделенное</translation>
    </message>
    <message id="trivex-app-copy-pem">
        <source>Copy as text</source>
        <translation>Копировать как текст</translation>
    </message>
    <message id="trivex-app-copy-report">
        <source>Copy report</source>
        <translation>Скопировать отчёт</translation>
    </message>
    <message id="trivex-app-copy-value">
        <source>Copy the value</source>
        <translation>Копировать значение</translation>
    </message>
    <message id="trivex-app-copy-with-label">
        <source>Copy with its label</source>
        <translation>Копировать с названием</translation>
    </message>
    <message id="trivex-app-create-request">
        <source>Create the request</source>
        <translation>Создать запрос</translation>
    </message>
    <message id="trivex-app-damaged-bytes">
        <source>Damaged: %1</source>
        <translation>Повреждено: %1</translation>
    </message>
    <message id="trivex-app-damaged-part">
        <source>Damaged part</source>
        <translation>Повреждённая часть</translation>
    </message>
    <message id="trivex-app-details">
        <source>Details</source>
        <translation>Сведения</translation>
    </message>
    <message id="trivex-app-details-none">
        <source>Nothing selected</source>
        <translation>Ничего не выбрано</translation>
    </message>
    <message id="trivex-app-details-none-text">
        <source>Select a row to read what is in it.</source>
        <translation>Выберите строку, чтобы прочитать сведения.</translation>
    </message>
    <message id="trivex-app-details-several">
        <source>Several rows are selected</source>
        <translation>Выбрано несколько строк</translation>
    </message>
    <message id="trivex-app-digits-length">
        <source>The number of digits is not right for this identifier.</source>
        <translation>Для этого номера не то количество цифр.</translation>
    </message>
    <message id="trivex-app-digits-only">
        <source>Only digits are expected here.</source>
        <translation>Здесь должны быть только цифры.</translation>
    </message>
    <message id="trivex-app-digits-wrong">
        <source>The check digits do not match: there may be a typing mistake.</source>
        <translation>Контрольные цифры не сходятся: возможно, опечатка.</translation>
    </message>
    <message id="trivex-app-document-changed">
        <source>The document was changed in the meantime.</source>
        <translation>Документ за это время изменился.</translation>
    </message>
    <message id="trivex-app-document-changed-advice">
        <source>It has been read again. See what it holds now, then sign or verify once more.</source>
        <translation>Он прочитан заново. Посмотрите, что в нём теперь, и повторите подпись или проверку.</translation>
    </message>
    <message id="trivex-app-document-exists">
        <source>There is a file of this name. Replace it, or choose another name.</source>
        <translation>Файл с таким именем уже есть. Замените его или выберите другое имя.</translation>
    </message>
    <message id="trivex-app-document-moved">
        <source>The document was changed while it was being signed. See what it holds now, then sign once more.</source>
        <translation>Документ изменился, пока подписывался. Посмотрите, что в нём теперь, и подпишите ещё раз.</translation>
    </message>
    <message id="trivex-app-document-no-digest">
        <source>This computer lacks the digest that belongs to this key. Install the GOST engine of OpenSSL, or choose another key.</source>
        <translation>На этом компьютере нет хэш-функции, нужной для этого ключа. Установите модуль ГОСТ для OpenSSL или выберите другой ключ.</translation>
    </message>
    <message id="trivex-app-document-not-good">
        <source>The key did not make a signature that fits its certificate. Nothing was written; choose another key.</source>
        <translation>Подпись этого ключа не подходит к его сертификату. Ничего не записано, выберите другой ключ.</translation>
    </message>
    <message id="trivex-app-document-not-read">
        <source>The document could not be read. Check the file and try again.</source>
        <translation>Документ не удалось прочитать. Проверьте файл и повторите.</translation>
    </message>
    <message id="trivex-app-document-not-signed">
        <source>The document was not signed. Check the token and try again.</source>
        <translation>Документ не подписан. Проверьте токен и повторите.</translation>
    </message>
    <message id="trivex-app-document-not-written">
        <source>The signature could not be written. Choose another folder or check the disk.</source>
        <translation>Подпись не удалось записать. Выберите другую папку или проверьте диск.</translation>
    </message>
    <message id="trivex-app-document-reread">
        <source>The document was changed and has been read again.</source>
        <translation>Документ изменился и прочитан заново.</translation>
    </message>
    <message id="trivex-app-document-same-file">
        <source>The signature would take the place of its own document. Choose another name.</source>
        <translation>Подпись заняла бы место самого документа. Выберите другое имя.</translation>
    </message>
    <message id="trivex-app-document-saved">
        <source>The document was saved.</source>
        <translation>Документ сохранён.</translation>
    </message>
    <message id="trivex-app-document-stopped">
        <source>Signing was stopped. Nothing was written; start again when you like.</source>
        <translation>Подписание остановлено, ничего не записано. Начните снова, когда захотите.</translation>
    </message>
    <message id="trivex-app-document-type">
        <source>Files of this type can't be signed here. PDF, PNG, JPEG and plain text can.</source>
        <translation>Файлы этого типа здесь не подписываются. Подходят PDF, PNG, JPEG и обычный текст.</translation>
    </message>
    <message id="trivex-app-document-unsaved">
        <source>The document was not saved.</source>
        <translation>Документ не сохранён.</translation>
    </message>
    <message id="trivex-app-document-wrong-key">
        <source>This key can't make such a signature. Choose another key.</source>
        <translation>Этим ключом такую подпись не поставить. Выберите другой ключ.</translation>
    </message>
    <message id="trivex-app-drag-refused">
        <source>These rows can't be dragged.</source>
        <translation>Эти строки нельзя перетащить.</translation>
    </message>
    <message id="trivex-app-drag-too-many">
        <source>No more than %1 rows can be dragged at once. Select fewer, or export them.</source>
        <translation>За один раз можно перетащить не больше %1 строк. Выберите меньше или экспортируйте их.</translation>
    </message>
    <message id="trivex-app-drop-document">
        <source>Drop a document here: PDF, PNG, JPEG or plain text.</source>
        <translation>Перетащите сюда документ: PDF, PNG, JPEG или обычный текст.</translation>
    </message>
    <message id="trivex-app-edit">
        <source>Edit</source>
        <translation>Изменить</translation>
    </message>
    <message id="trivex-app-edit-doubled">
        <source>This request holds its usages or its further names twice, and programs differ in which of the two counts. Leave them as they were, or make a new request.</source>
        <translation>Назначения или дополнительные имена указаны в запросе дважды, и программы по-разному решают, что из этого действует. Оставьте их прежними или создайте новый запрос.</translation>
    </message>
    <message id="trivex-app-edit-loses-extensions">
        <source>The usages and further names in this request hold data that Trivex can't read. Saving would lose it. Leave them as they were, or make a new request.</source>
        <translation>В назначениях и дополнительных именах запроса есть данные, которые Trivex не может прочитать. При сохранении они пропали бы. Оставьте их прежними или создайте новый запрос.</translation>
    </message>
    <message id="trivex-app-edit-loses-name">
        <source>Beside a value that you changed, the name in this request holds data that Trivex can't read. Saving would lose it. Leave that value as it was, or make a new request.</source>
        <translation>Рядом с изменённым значением в имени запроса есть данные, которые Trivex не может прочитать. При сохранении они пропали бы. Оставьте это значение прежним или создайте новый запрос.</translation>
    </message>
    <message id="trivex-app-edit-request-title">
        <source>Edit the request</source>
        <translation>Изменить запрос</translation>
    </message>
    <message id="trivex-app-edit-usages">
        <source>Usage of the key and the certificate</source>
        <translation>Назначение ключа и сертификата</translation>
    </message>
    <message id="trivex-app-empty">
        <source>Nothing here yet</source>
        <translation>Здесь пока пусто</translation>
    </message>
    <message id="trivex-app-ends-soon" numerus="yes">
        <source>%n expire soon</source>
        <translation>
            <numerusform>%n скоро истекает</numerusform>
            <numerusform>%n скоро истекают</numerusform>
            <numerusform>%n скоро истекают</numerusform>
        </translation>
    </message>
    <message id="trivex-app-error-title">
        <source>That did not work</source>
        <translation>Не получилось</translation>
    </message>
    <message id="trivex-app-expired-confirm">
        <source>Sign all the same</source>
        <translation>Всё равно подписать</translation>
    </message>
    <message id="trivex-app-expired-text">
        <source>It expired on %1. Whoever checks the signature may refuse it.</source>
        <translation>Его срок истёк %1. Проверяющий может не принять подпись.</translation>
    </message>
    <message id="trivex-app-expired-title">
        <source>Sign with this certificate?</source>
        <translation>Подписать этим сертификатом?</translation>
    </message>
    <message id="trivex-app-expiring" numerus="yes">
        <source>%n certificates expire within 30 days</source>
        <translation>
            <numerusform>%n сертификат истекает в ближайшие 30 дней</numerusform>
            <numerusform>%n сертификата истекают в ближайшие 30 дней</numerusform>
            <numerusform>%n сертификатов истекают в ближайшие 30 дней</numerusform>
        </translation>
    </message>
    <message id="trivex-app-expiring-show">
        <source>Show them</source>
        <translation>Показать</translation>
    </message>
    <message id="trivex-app-export">
        <source>Export…</source>
        <translation>Экспорт…</translation>
    </message>
    <message id="trivex-app-export-failed">
        <source>The file was not exported.</source>
        <translation>Файл не экспортирован.</translation>
    </message>
    <message id="trivex-app-export-key">
        <source>Export with the private key</source>
        <translation>Экспортировать с закрытым ключом</translation>
    </message>
    <message id="trivex-app-export-key-accept">
        <source>Continue</source>
        <translation>Продолжить</translation>
    </message>
    <message id="trivex-app-export-key-again">
        <source>The same password again</source>
        <translation>Тот же пароль ещё раз</translation>
    </message>
    <message id="trivex-app-export-key-busy">
        <source>Making the file…</source>
        <translation>Создание файла…</translation>
    </message>
    <message id="trivex-app-export-key-hint">
        <source>Use a long one: nothing limits the number of tries.</source>
        <translation>Возьмите длинный: число попыток подбора ничем не ограничено.</translation>
    </message>
    <message id="trivex-app-export-key-password">
        <source>Password of the file</source>
        <translation>Пароль к файлу</translation>
    </message>
    <message id="trivex-app-export-key-text">
        <source>The file will hold the private key, its certificate and the issuers. Whoever has the file and its password can sign in the holder's name.</source>
        <translation>В файле будут закрытый ключ, его сертификат и сертификаты издателей. Тот, у кого есть этот файл и пароль к нему, сможет подписывать от имени владельца.</translation>
    </message>
    <message id="trivex-app-export-key-title">
        <source>Export with the private key</source>
        <translation>Экспорт с закрытым ключом</translation>
    </message>
    <message id="trivex-app-export-name">
        <source>certificates</source>
        <translation>сертификаты</translation>
    </message>
    <message id="trivex-app-export-no-password">
        <source>Type a password: without one, everybody could read the key.</source>
        <translation>Введите пароль: без него ключ сможет прочитать кто угодно.</translation>
    </message>
    <message id="trivex-app-export-not-made">
        <source>This kind of key can't be put into a file. Use it where it is.</source>
        <translation>Ключ этого вида нельзя записать в файл. Пользуйтесь им там, где он лежит.</translation>
    </message>
    <message id="trivex-app-export-nothing">
        <source>There is nothing to export any more. Select the rows again.</source>
        <translation>Экспортировать уже нечего. Выберите строки заново.</translation>
    </message>
    <message id="trivex-app-export-title">
        <source>Save as</source>
        <translation>Сохранить как</translation>
    </message>
    <message id="trivex-app-export-together">
        <source>Export into one file…</source>
        <translation>Экспорт в один файл…</translation>
    </message>
    <message id="trivex-app-exported">
        <source>Exported to %1</source>
        <translation>Экспортировано в %1</translation>
    </message>
    <message id="trivex-app-ext-application-purposes">
        <source>Purposes for applications</source>
        <translation>Назначения для приложений</translation>
    </message>
    <message id="trivex-app-ext-authority-version">
        <source>Version of the authority</source>
        <translation>Версия центра</translation>
    </message>
    <message id="trivex-app-ext-basic">
        <source>Basic constraints</source>
        <translation>Основные ограничения</translation>
    </message>
    <message id="trivex-app-ext-certificate-issuer">
        <source>Issuer of the certificate</source>
        <translation>Издатель сертификата</translation>
    </message>
    <message id="trivex-app-ext-challenge">
        <source>Challenge password</source>
        <translation>Пароль запроса</translation>
    </message>
    <message id="trivex-app-ext-critical">
        <source>%1 (critical)</source>
        <translation>%1 (критическое)</translation>
    </message>
    <message id="trivex-app-ext-delta">
        <source>Changes since the list</source>
        <translation>Изменения к списку</translation>
    </message>
    <message id="trivex-app-ext-directory-attributes">
        <source>Attributes of the holder</source>
        <translation>Сведения о владельце</translation>
    </message>
    <message id="trivex-app-ext-draft">
        <source>Draft for certificate transparency</source>
        <translation>Предварительный сертификат (Certificate Transparency)</translation>
    </message>
    <message id="trivex-app-ext-empty">
        <source>empty</source>
        <translation>пусто</translation>
    </message>
    <message id="trivex-app-ext-fresh-lists">
        <source>Lists of changes</source>
        <translation>Списки изменений</translation>
    </message>
    <message id="trivex-app-ext-holder-access">
        <source>Addresses of the holder</source>
        <translation>Адреса владельца</translation>
    </message>
    <message id="trivex-app-ext-holder-names">
        <source>Other names of the holder</source>
        <translation>Другие имена владельца</translation>
    </message>
    <message id="trivex-app-ext-holder-tool">
        <source>Signature tool of the holder</source>
        <translation>Средство подписи владельца</translation>
    </message>
    <message id="trivex-app-ext-identification">
        <source>How the identity was checked</source>
        <translation>Как проверена личность</translation>
    </message>
    <message id="trivex-app-ext-inhibit-any">
        <source>Certificates to skip before any policy counts no more</source>
        <translation>Сертификатов до отмены любой политики</translation>
    </message>
    <message id="trivex-app-ext-invalid-since">
        <source>Invalid since</source>
        <translation>Недействителен с</translation>
    </message>
    <message id="trivex-app-ext-issuer-access">
        <source>Addresses of the issuer</source>
        <translation>Адреса издателя</translation>
    </message>
    <message id="trivex-app-ext-issuer-key-id">
        <source>Issuer's key identifier</source>
        <translation>Идентификатор ключа издателя</translation>
    </message>
    <message id="trivex-app-ext-issuer-names">
        <source>Other names of the issuer</source>
        <translation>Другие имена издателя</translation>
    </message>
    <message id="trivex-app-ext-issuer-tools">
        <source>Signature tools of the issuer</source>
        <translation>Средства подписи издателя</translation>
    </message>
    <message id="trivex-app-ext-key-id">
        <source>Key identifier</source>
        <translation>Идентификатор ключа</translation>
    </message>
    <message id="trivex-app-ext-key-period">
        <source>Usage period of the private key</source>
        <translation>Срок действия закрытого ключа</translation>
    </message>
    <message id="trivex-app-ext-key-usage">
        <source>Key usage</source>
        <translation>Применение ключа</translation>
    </message>
    <message id="trivex-app-ext-list-number">
        <source>Number of the list</source>
        <translation>Номер списка</translation>
    </message>
    <message id="trivex-app-ext-list-points">
        <source>Lists of revoked certificates</source>
        <translation>Списки отозванных сертификатов</translation>
    </message>
    <message id="trivex-app-ext-list-scope">
        <source>What the list covers</source>
        <translation>Что охватывает список</translation>
    </message>
    <message id="trivex-app-ext-name-constraints">
        <source>Name constraints</source>
        <translation>Ограничения имён</translation>
    </message>
    <message id="trivex-app-ext-netscape-authority">
        <source>Netscape: revocation address of the authority</source>
        <translation>Netscape: адрес отзыва для центра</translation>
    </message>
    <message id="trivex-app-ext-netscape-base">
        <source>Netscape: base address</source>
        <translation>Netscape: основной адрес</translation>
    </message>
    <message id="trivex-app-ext-netscape-comment">
        <source>Netscape: comment</source>
        <translation>Netscape: примечание</translation>
    </message>
    <message id="trivex-app-ext-netscape-policy">
        <source>Netscape: policy address</source>
        <translation>Netscape: адрес политики</translation>
    </message>
    <message id="trivex-app-ext-netscape-renewal">
        <source>Netscape: renewal address</source>
        <translation>Netscape: адрес продления</translation>
    </message>
    <message id="trivex-app-ext-netscape-revocation">
        <source>Netscape: revocation address</source>
        <translation>Netscape: адрес отзыва</translation>
    </message>
    <message id="trivex-app-ext-netscape-server">
        <source>Netscape: server name</source>
        <translation>Netscape: имя сервера</translation>
    </message>
    <message id="trivex-app-ext-netscape-type">
        <source>Netscape: type of certificate</source>
        <translation>Netscape: вид сертификата</translation>
    </message>
    <message id="trivex-app-ext-ocsp-no-check">
        <source>No revocation check of this OCSP key</source>
        <translation>Отзыв этого ключа OCSP не проверяется</translation>
    </message>
    <message id="trivex-app-ext-policies">
        <source>Certificate policies</source>
        <translation>Политики сертификата</translation>
    </message>
    <message id="trivex-app-ext-policy-constraints">
        <source>Policy constraints</source>
        <translation>Ограничения политик</translation>
    </message>
    <message id="trivex-app-ext-policy-mappings">
        <source>Policy mappings</source>
        <translation>Соответствия политик</translation>
    </message>
    <message id="trivex-app-ext-purposes">
        <source>Purposes</source>
        <translation>Назначения</translation>
    </message>
    <message id="trivex-app-ext-qualified">
        <source>Statements of a qualified certificate</source>
        <translation>Заявления квалифицированного сертификата</translation>
    </message>
    <message id="trivex-app-ext-reason">
        <source>Reason</source>
        <translation>Причина</translation>
    </message>
    <message id="trivex-app-ext-template">
        <source>Certificate template</source>
        <translation>Шаблон сертификата</translation>
    </message>
    <message id="trivex-app-ext-tls">
        <source>Required TLS extensions</source>
        <translation>Требуемые расширения TLS</translation>
    </message>
    <message id="trivex-app-ext-transparency">
        <source>Certificate transparency</source>
        <translation>Прозрачность сертификатов</translation>
    </message>
    <message id="trivex-app-ext-wanted">
        <source>Wanted extensions</source>
        <translation>Запрошенные расширения</translation>
    </message>
    <message id="trivex-app-extensions">
        <source>Extensions</source>
        <translation>Расширения</translation>
    </message>
    <message id="trivex-app-field-add">
        <source>Add a field</source>
        <translation>Добавить поле</translation>
    </message>
    <message id="trivex-app-field-add-number">
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
    <message id="trivex-app-field-business">
        <source>Kind of business</source>
        <translation>Вид деятельности</translation>
    </message>
    <message id="trivex-app-field-country">
        <source>Country code</source>
        <translation>Код страны</translation>
    </message>
    <message id="trivex-app-field-country-flag">
        <source>Two capital Latin letters, as in RU.</source>
        <translation>Две латинские буквы, например RU.</translation>
    </message>
    <message id="trivex-app-field-department">
        <source>Department</source>
        <translation>Подразделение</translation>
    </message>
    <message id="trivex-app-field-description">
        <source>Description</source>
        <translation>Описание</translation>
    </message>
    <message id="trivex-app-field-dns">
        <source>Host name</source>
        <translation>Имя узла</translation>
    </message>
    <message id="trivex-app-field-dns-flag">
        <source>This is no host name. Write one as in www.example.org or *.example.org.</source>
        <translation>Это не имя узла. Введите его, например, так: www.example.org или *.example.org.</translation>
    </message>
    <message id="trivex-app-field-domain">
        <source>Part of a domain name</source>
        <translation>Часть доменного имени</translation>
    </message>
    <message id="trivex-app-field-email">
        <source>E-mail</source>
        <translation>Электронная почта</translation>
    </message>
    <message id="trivex-app-field-email-flag">
        <source>This is no e-mail address. Write one in Latin letters, as in name@example.org.</source>
        <translation>Это не адрес электронной почты. Введите адрес латинскими буквами, например name@example.org.</translation>
    </message>
    <message id="trivex-app-field-generation">
        <source>Generation (Jr., Sr.)</source>
        <translation>Поколение (мл., ст.)</translation>
    </message>
    <message id="trivex-app-field-given-name">
        <source>First name and patronymic</source>
        <translation>Имя и отчество</translation>
    </message>
    <message id="trivex-app-field-initials">
        <source>Initials</source>
        <translation>Инициалы</translation>
    </message>
    <message id="trivex-app-field-inn">
        <source>INN</source>
        <translation>ИНН</translation>
    </message>
    <message id="trivex-app-field-innle">
        <source>INN of the organization</source>
        <translation>ИНН организации</translation>
    </message>
    <message id="trivex-app-field-ip">
        <source>IP address</source>
        <translation>IP-адрес</translation>
    </message>
    <message id="trivex-app-field-ip-flag">
        <source>This is no IP address. Write one as in 192.0.2.1 or 2001:db8::1.</source>
        <translation>Это не IP-адрес. Введите его, например, так: 192.0.2.1 или 2001:db8::1.</translation>
    </message>
    <message id="trivex-app-field-locality">
        <source>City</source>
        <translation>Город</translation>
    </message>
    <message id="trivex-app-field-name">
        <source>Name (of the person or service)</source>
        <translation>Имя (человека или службы)</translation>
    </message>
    <message id="trivex-app-field-number">
        <source>Number of the field</source>
        <translation>Номер поля</translation>
    </message>
    <message id="trivex-app-field-number-wrong">
        <source>This is no number of a field. Write one as in 1.2.3.4.</source>
        <translation>Это не номер поля. Введите его, например, так: 1.2.3.4.</translation>
    </message>
    <message id="trivex-app-field-ogrn">
        <source>OGRN or OGRNIP</source>
        <translation>ОГРН или ОГРНИП</translation>
    </message>
    <message id="trivex-app-field-ogrnip">
        <source>OGRNIP</source>
        <translation>ОГРНИП</translation>
    </message>
    <message id="trivex-app-field-organization">
        <source>Organization</source>
        <translation>Организация</translation>
    </message>
    <message id="trivex-app-field-organization-id">
        <source>Number of the organization in a register</source>
        <translation>Номер организации в реестре</translation>
    </message>
    <message id="trivex-app-field-other">
        <source>Another, by its number</source>
        <translation>Другое, по номеру</translation>
    </message>
    <message id="trivex-app-field-postal-code">
        <source>Postal code</source>
        <translation>Почтовый индекс</translation>
    </message>
    <message id="trivex-app-field-printable-flag">
        <source>Only Latin letters, digits, blanks and the marks ' ( ) + , - . / : = ? are allowed here.</source>
        <translation>Здесь допустимы только латинские буквы, цифры, пробелы и знаки ' ( ) + , - . / : = ?</translation>
    </message>
    <message id="trivex-app-field-pseudonym">
        <source>Pseudonym</source>
        <translation>Псевдоним</translation>
    </message>
    <message id="trivex-app-field-qualifier">
        <source>Qualifier of the name</source>
        <translation>Уточнение имени</translation>
    </message>
    <message id="trivex-app-field-serial">
        <source>Serial number of the holder</source>
        <translation>Порядковый номер владельца</translation>
    </message>
    <message id="trivex-app-field-snils">
        <source>SNILS</source>
        <translation>СНИЛС</translation>
    </message>
    <message id="trivex-app-field-state">
        <source>Region</source>
        <translation>Регион</translation>
    </message>
    <message id="trivex-app-field-street">
        <source>Street and house</source>
        <translation>Улица и дом</translation>
    </message>
    <message id="trivex-app-field-surname">
        <source>Last name</source>
        <translation>Фамилия</translation>
    </message>
    <message id="trivex-app-field-telephone">
        <source>Telephone</source>
        <translation>Телефон</translation>
    </message>
    <message id="trivex-app-field-title">
        <source>Position</source>
        <translation>Должность</translation>
    </message>
    <message id="trivex-app-field-uri">
        <source>Web address (URI)</source>
        <translation>Веб-адрес (URI)</translation>
    </message>
    <message id="trivex-app-field-uri-flag">
        <source>This is no whole web address. Write one in Latin letters, with https:// at its beginning.</source>
        <translation>Это не полный веб-адрес. Введите его латинскими буквами и с https:// в начале.</translation>
    </message>
    <message id="trivex-app-field-user">
        <source>User name</source>
        <translation>Имя пользователя</translation>
    </message>
    <message id="trivex-app-file">
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message id="trivex-app-file-digest">
        <source>Digest (SHA-256)</source>
        <translation>Хэш (SHA-256)</translation>
    </message>
    <message id="trivex-app-file-folder">
        <source>Folder</source>
        <translation>Папка</translation>
    </message>
    <message id="trivex-app-file-name">
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message id="trivex-app-file-size">
        <source>Size</source>
        <translation>Размер</translation>
    </message>
    <message id="trivex-app-file-type">
        <source>Type</source>
        <translation>Тип</translation>
    </message>
    <message id="trivex-app-filter">
        <source>Filters</source>
        <translation>Фильтры</translation>
    </message>
    <message id="trivex-app-filter-all">
        <source>All files</source>
        <translation>Все файлы</translation>
    </message>
    <message id="trivex-app-filter-certificates">
        <source>Certificates and bundles</source>
        <translation>Сертификаты и контейнеры</translation>
    </message>
    <message id="trivex-app-filter-hides" numerus="yes">
        <source>A filter hides %n rows</source>
        <translation>
            <numerusform>Фильтр скрывает %n строку</numerusform>
            <numerusform>Фильтр скрывает %n строки</numerusform>
            <numerusform>Фильтр скрывает %n строк</numerusform>
        </translation>
    </message>
    <message id="trivex-app-filter-keys">
        <source>With a private key</source>
        <translation>С закрытым ключом</translation>
    </message>
    <message id="trivex-app-filter-lift">
        <source>Show all</source>
        <translation>Показать все</translation>
    </message>
    <message id="trivex-app-filter-on">
        <source>on</source>
        <translation>включён</translation>
    </message>
    <message id="trivex-app-filter-token">
        <source>On the token “%1”</source>
        <translation>На токене «%1»</translation>
    </message>
    <message id="trivex-app-filtered">
        <source>Only these are shown: %1</source>
        <translation>Показаны только: %1</translation>
    </message>
    <message id="trivex-app-fingerprints">
        <source>Fingerprints</source>
        <translation>Отпечатки</translation>
    </message>
    <message id="trivex-app-form-attached">
        <source>The same, with the document in it (CMS, .p7m)</source>
        <translation>То же, вместе с документом (CMS, .p7m)</translation>
    </message>
    <message id="trivex-app-form-detached">
        <source>Signature that others can check (CMS, .p7s)</source>
        <translation>Подпись, которую проверит каждый (CMS, .p7s)</translation>
    </message>
    <message id="trivex-app-form-raw">
        <source>Bare RSA signature, for this program (.sig)</source>
        <translation>Простая подпись RSA для этой программы (.sig)</translation>
    </message>
    <message id="trivex-app-format-chain">
        <source>PEM with the issuers</source>
        <translation>PEM с издателями</translation>
    </message>
    <message id="trivex-app-format-der">
        <source>DER, binary</source>
        <translation>DER, двоичный</translation>
    </message>
    <message id="trivex-app-format-p12">
        <source>Bundle with the private key</source>
        <translation>Контейнер с закрытым ключом</translation>
    </message>
    <message id="trivex-app-format-p7b">
        <source>PKCS#7, all in one</source>
        <translation>P7B, все вместе</translation>
    </message>
    <message id="trivex-app-format-p7b-chain">
        <source>PKCS#7 with the issuers</source>
        <translation>P7B с издателями</translation>
    </message>
    <message id="trivex-app-format-pdf">
        <source>PDF document</source>
        <translation>Документ PDF</translation>
    </message>
    <message id="trivex-app-format-pem">
        <source>PEM, text</source>
        <translation>PEM, текстовый</translation>
    </message>
    <message id="trivex-app-general">
        <source>General</source>
        <translation>Общее</translation>
    </message>
    <message id="trivex-app-generate">
        <source>Make the key</source>
        <translation>Создать ключ</translation>
    </message>
    <message id="trivex-app-generate-failed">
        <source>No key was made.</source>
        <translation>Ключ не создан.</translation>
    </message>
    <message id="trivex-app-generated">
        <source>The key is on “%1”. Next: whom is the certificate for?</source>
        <translation>Ключ создан на токене «%1». Теперь заполните данные владельца.</translation>
    </message>
    <message id="trivex-app-generating">
        <source>The token is making the key. This may take a minute.</source>
        <translation>Токен создаёт ключ. Это может занять до минуты.</translation>
    </message>
    <message id="trivex-app-gost">
        <source>GOST R</source>
        <translation>ГОСТ Р</translation>
    </message>
    <message id="trivex-app-help">
        <source>Keyboard shortcuts</source>
        <translation>Сочетания клавиш</translation>
    </message>
    <message id="trivex-app-help-import">
        <source>Open a file</source>
        <translation>Открыть файл</translation>
    </message>
    <message id="trivex-app-help-quit">
        <source>Quit</source>
        <translation>Выйти из программы</translation>
    </message>
    <message id="trivex-app-help-search">
        <source>Search in the list</source>
        <translation>Искать в списке</translation>
    </message>
    <message id="trivex-app-help-several">
        <source>Select several rows</source>
        <translation>Выделить несколько строк</translation>
    </message>
    <message id="trivex-app-help-undo">
        <source>Bring back what was removed</source>
        <translation>Вернуть удалённое</translation>
    </message>
    <message id="trivex-app-holder">
        <source>Holder</source>
        <translation>Владелец</translation>
    </message>
    <message id="trivex-app-identified-by-passport">
        <source>by a biometric passport</source>
        <translation>по биометрическому паспорту</translation>
    </message>
    <message id="trivex-app-identified-by-signature">
        <source>by a qualified signature</source>
        <translation>по квалифицированной подписи</translation>
    </message>
    <message id="trivex-app-identified-by-state">
        <source>by the state's systems of identification</source>
        <translation>через государственные системы идентификации</translation>
    </message>
    <message id="trivex-app-identified-in-person">
        <source>in person</source>
        <translation>лично</translation>
    </message>
    <message id="trivex-app-identifiers-note">
        <source>The numbers below go into the request. They are checked as you type.</source>
        <translation>Номера ниже войдут в запрос. Они проверяются при вводе.</translation>
    </message>
    <message id="trivex-app-import">
        <source>Import…</source>
        <translation>Импорт…</translation>
    </message>
    <message id="trivex-app-import-accept">
        <source>Import</source>
        <translation>Импортировать</translation>
    </message>
    <message id="trivex-app-import-failed">
        <source>Nothing was imported.</source>
        <translation>Импорт не выполнен.</translation>
    </message>
    <message id="trivex-app-import-leave-rest">
        <source>Leave the rest (%1)</source>
        <translation>Не открывать остальные (%1)</translation>
    </message>
    <message id="trivex-app-import-partly">
        <source>Only %1 of %2 were imported. What is still ticked is not; start again for it.</source>
        <translation>Импортировано только %1 из %2. Остальное осталось отмеченным: повторите импорт.</translation>
    </message>
    <message id="trivex-app-import-roots" numerus="yes">
        <source>%n of them are roots: every certificate that they issue will be trusted. Import them only if you know whose they are.</source>
        <translation>
            <numerusform>Среди них %n корневой сертификат: всем выпущенным под ним сертификатам программа будет доверять. Импортируйте его, только если знаете, чей он.</numerusform>
            <numerusform>Среди них %n корневых сертификата: всем выпущенным под ними сертификатам программа будет доверять. Импортируйте их, только если знаете, чьи они.</numerusform>
            <numerusform>Среди них %n корневых сертификатов: всем выпущенным под ними сертификатам программа будет доверять. Импортируйте их, только если знаете, чьи они.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-import-title">
        <source>Import a certificate or bundle</source>
        <translation>Импорт сертификата или контейнера</translation>
    </message>
    <message id="trivex-app-import-to">
        <source>Import to</source>
        <translation>Куда импортировать</translation>
    </message>
    <message id="trivex-app-import-undone">
        <source>The import ended before everything was at its place.</source>
        <translation>Импорт завершился не полностью.</translation>
    </message>
    <message id="trivex-app-import-without-key">
        <source>Your files hold no private keys: only the certificate goes there. For the key, choose a token.</source>
        <translation>В ваших файлах закрытые ключи не хранятся: туда попадёт только сертификат. Для ключа выберите токен.</translation>
    </message>
    <message id="trivex-app-imported">
        <source>“%1” is now in “%2”.</source>
        <translation>«%1» теперь в хранилище «%2».</translation>
    </message>
    <message id="trivex-app-imported-many" numerus="yes">
        <source>%n items are now in “%1”.</source>
        <translation>
            <numerusform>В хранилище «%1» добавлен %n объект.</numerusform>
            <numerusform>В хранилище «%1» добавлены %n объекта.</numerusform>
            <numerusform>В хранилище «%1» добавлено %n объектов.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-initialise">
        <source>Initialise token…</source>
        <translation>Инициализировать токен…</translation>
    </message>
    <message id="trivex-app-initialise-confirm">
        <source>Delete all and initialise</source>
        <translation>Удалить всё</translation>
    </message>
    <message id="trivex-app-initialise-consent">
        <source>To agree, type the name of the token: %1</source>
        <translation>Чтобы согласиться, введите имя токена: %1</translation>
    </message>
    <message id="trivex-app-initialise-names">
        <source>A token gets another name only in this way.</source>
        <translation>Другое имя токен получает только так.</translation>
    </message>
    <message id="trivex-app-initialise-title">
        <source>Initialise the token</source>
        <translation>Инициализация токена</translation>
    </message>
    <message id="trivex-app-initialise-warning">
        <source>Everything on “%1” is deleted for good.</source>
        <translation>Всё, что есть на токене «%1», будет удалено без возможности восстановления.</translation>
    </message>
    <message id="trivex-app-initialised">
        <source>“%1” is ready: empty, with its new PIN.</source>
        <translation>Токен «%1» готов: он пуст, PIN‑код на нём новый.</translation>
    </message>
    <message id="trivex-app-issuer">
        <source>Issuer</source>
        <translation>Издатель</translation>
    </message>
    <message id="trivex-app-item-answer">
        <source>Answer about revocation (OCSP)</source>
        <translation>Ответ об отзыве (OCSP)</translation>
    </message>
    <message id="trivex-app-item-attributes">
        <source>Attribute certificate</source>
        <translation>Сертификат атрибутов</translation>
    </message>
    <message id="trivex-app-item-encrypted">
        <source>Encrypted message</source>
        <translation>Зашифрованное сообщение</translation>
    </message>
    <message id="trivex-app-item-foreign">
        <source>Can't be imported</source>
        <translation>Не импортируется</translation>
    </message>
    <message id="trivex-app-item-list">
        <source>List of revoked certificates</source>
        <translation>Список отозванных сертификатов</translation>
    </message>
    <message id="trivex-app-item-private-key">
        <source>Private key</source>
        <translation>Закрытый ключ</translation>
    </message>
    <message id="trivex-app-item-protected">
        <source>Protected by a password</source>
        <translation>Защищён паролем</translation>
    </message>
    <message id="trivex-app-item-public-key">
        <source>Public key</source>
        <translation>Открытый ключ</translation>
    </message>
    <message id="trivex-app-item-request">
        <source>Certificate request</source>
        <translation>Запрос на сертификат</translation>
    </message>
    <message id="trivex-app-item-ssh-key">
        <source>Private key of SSH</source>
        <translation>Закрытый ключ SSH</translation>
    </message>
    <message id="trivex-app-item-unnamed">
        <source>Without a name</source>
        <translation>Без имени</translation>
    </message>
    <message id="trivex-app-item-with-key">
        <source>With its private key · %1</source>
        <translation>С закрытым ключом · %1</translation>
    </message>
    <message id="trivex-app-items" numerus="yes">
        <source>%n items</source>
        <translation>
            <numerusform>%n элемент</numerusform>
            <numerusform>%n элемента</numerusform>
            <numerusform>%n элементов</numerusform>
        </translation>
    </message>
    <message id="trivex-app-items-chosen">
        <source>Selected: %1 of %2</source>
        <translation>Выбрано: %1 из %2</translation>
    </message>
    <message id="trivex-app-items-of-file">
        <source>What is in the file</source>
        <translation>Содержимое файла</translation>
    </message>
    <message id="trivex-app-key-bare">
        <source>%1, without a certificate</source>
        <translation>%1, без сертификата</translation>
    </message>
    <message id="trivex-app-key-brought">
        <source>made elsewhere and written to the token</source>
        <translation>создан не здесь и записан на токен</translation>
    </message>
    <message id="trivex-app-key-bytes">
        <source>Key</source>
        <translation>Ключ</translation>
    </message>
    <message id="trivex-app-key-certified">
        <source>%1, has a certificate</source>
        <translation>%1, с сертификатом</translation>
    </message>
    <message id="trivex-app-key-choice">
        <source>Key</source>
        <translation>Ключ</translation>
    </message>
    <message id="trivex-app-key-cipher">
        <source>Cipher</source>
        <translation>Шифр</translation>
    </message>
    <message id="trivex-app-key-curve">
        <source>Curve</source>
        <translation>Кривая</translation>
    </message>
    <message id="trivex-app-key-decrypts">
        <source>decrypt</source>
        <translation>расшифровывать</translation>
    </message>
    <message id="trivex-app-key-derives">
        <source>agree on keys</source>
        <translation>согласовывать ключи</translation>
    </message>
    <message id="trivex-app-key-digest">
        <source>Digest</source>
        <translation>Хэш-функция</translation>
    </message>
    <message id="trivex-app-key-exponent">
        <source>Exponent</source>
        <translation>Экспонента</translation>
    </message>
    <message id="trivex-app-key-group">
        <source>Key</source>
        <translation>Ключ</translation>
    </message>
    <message id="trivex-app-key-id-issuer">
        <source>Its issuer</source>
        <translation>Его издатель</translation>
    </message>
    <message id="trivex-app-key-kind" numerus="yes">
        <source>%1, %n bits</source>
        <translation>
            <numerusform>%1, %n бит</numerusform>
            <numerusform>%1, %n бита</numerusform>
            <numerusform>%1, %n бит</numerusform>
        </translation>
    </message>
    <message id="trivex-app-key-kind-and-size">
        <source>Kind and size</source>
        <translation>Вид и длина</translation>
    </message>
    <message id="trivex-app-key-made-here">
        <source>made on this token</source>
        <translation>создан на этом токене</translation>
    </message>
    <message id="trivex-app-key-make-request">
        <source>Make a request…</source>
        <translation>Создать запрос…</translation>
    </message>
    <message id="trivex-app-key-modulus">
        <source>Modulus</source>
        <translation>Модуль</translation>
    </message>
    <message id="trivex-app-key-name">
        <source>Key name</source>
        <translation>Имя ключа</translation>
    </message>
    <message id="trivex-app-key-name-hint">
        <source>Your own name for it on the token</source>
        <translation>Как он будет называться на токене</translation>
    </message>
    <message id="trivex-app-key-nameless">
        <source>Key without a name</source>
        <translation>Ключ без имени</translation>
    </message>
    <message id="trivex-app-key-new">
        <source>A new key</source>
        <translation>Новый ключ</translation>
    </message>
    <message id="trivex-app-key-no-request">
        <source>No request can be made for this key: the token does not show its public half, or the key may not sign.</source>
        <translation>Запрос для этого ключа создать нельзя: токен не показывает его открытую часть или ключом нельзя подписывать.</translation>
    </message>
    <message id="trivex-app-key-other-kind">
        <source>Another kind</source>
        <translation>Другой вид</translation>
    </message>
    <message id="trivex-app-key-parameters">
        <source>Parameters</source>
        <translation>Параметры</translation>
    </message>
    <message id="trivex-app-key-presumed">
        <source>Whether the token has the key of this certificate shows after the PIN is entered.</source>
        <translation>Есть ли на токене ключ этого сертификата, станет известно после ввода PIN‑кода.</translation>
    </message>
    <message id="trivex-app-key-removed">
        <source>The key is removed.</source>
        <translation>Ключ удалён.</translation>
    </message>
    <message id="trivex-app-key-row-id">
        <source>Id on the token</source>
        <translation>Идентификатор на токене</translation>
    </message>
    <message id="trivex-app-key-row-kind">
        <source>Kind</source>
        <translation>Вид</translation>
    </message>
    <message id="trivex-app-key-row-name">
        <source>Key name</source>
        <translation>Имя ключа</translation>
    </message>
    <message id="trivex-app-key-row-origin">
        <source>Origin</source>
        <translation>Происхождение</translation>
    </message>
    <message id="trivex-app-key-row-request">
        <source>Waits for the certificate of</source>
        <translation>Ждёт сертификата по запросу</translation>
    </message>
    <message id="trivex-app-key-row-token">
        <source>Token</source>
        <translation>Токен</translation>
    </message>
    <message id="trivex-app-key-row-uses">
        <source>May</source>
        <translation>Может</translation>
    </message>
    <message id="trivex-app-key-set">
        <source>%1, parameter set %2 (%3)</source>
        <translation>%1, набор параметров %2 (%3)</translation>
    </message>
    <message id="trivex-app-key-signs">
        <source>sign</source>
        <translation>подписывать</translation>
    </message>
    <message id="trivex-app-key-unnamed">
        <source>Key without a name</source>
        <translation>Ключ без имени</translation>
    </message>
    <message id="trivex-app-key-unseen">
        <source>Key not seen yet</source>
        <translation>Ключ ещё не виден</translation>
    </message>
    <message id="trivex-app-key-unwraps">
        <source>unwrap keys</source>
        <translation>разворачивать ключи</translation>
    </message>
    <message id="trivex-app-key-uses-nothing">
        <source>nothing</source>
        <translation>ничего</translation>
    </message>
    <message id="trivex-app-key-uses-unknown">
        <source>is known after the PIN</source>
        <translation>будет известно после ввода PIN‑кода</translation>
    </message>
    <message id="trivex-app-key-waits">
        <source>This key waits for the certificate of the request “%1”.</source>
        <translation>Этот ключ ждёт сертификата по запросу «%1».</translation>
    </message>
    <message id="trivex-app-keys-are-no-files">
        <source>A key without a certificate can't be saved as a file. Select certificates or requests too.</source>
        <translation>Ключ без сертификата нельзя сохранить в файл. Выберите ещё сертификаты или запросы.</translation>
    </message>
    <message id="trivex-app-keys-bare">
        <source>Keys without certificate</source>
        <translation>Ключи без сертификата</translation>
    </message>
    <message id="trivex-app-keys-hidden">
        <source>There may be more keys, which show only after the PIN.</source>
        <translation>Могут быть и другие ключи: их видно только после ввода PIN‑кода.</translation>
    </message>
    <message id="trivex-app-keys-show">
        <source>Show the keys…</source>
        <translation>Показать ключи…</translation>
    </message>
    <message id="trivex-app-kind-broken" numerus="yes">
        <source>%n parts of the file are damaged and are left out.</source>
        <translation>
            <numerusform>%n часть файла повреждена и пропущена.</numerusform>
            <numerusform>%n части файла повреждены и пропущены.</numerusform>
            <numerusform>%n частей файла повреждены и пропущены.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-kind-curve">
        <source>Elliptic curve %1</source>
        <translation>Эллиптическая кривая %1</translation>
    </message>
    <message id="trivex-app-kind-encrypted">
        <source>This is an encrypted message. It can't be opened here; its recipient opens it in the program for mail or documents.</source>
        <translation>Это зашифрованное сообщение. Здесь его не открыть: его откроет получатель в почтовой программе или в программе для документов.</translation>
    </message>
    <message id="trivex-app-kind-foreign">
        <source>This file holds no certificate of a key, so there is nothing to import. Choose another one.</source>
        <translation>В этом файле нет сертификата ключа, импортировать нечего. Выберите другой файл.</translation>
    </message>
    <message id="trivex-app-kind-gost">
        <source>GOST R 34.10-2012, %1 bits</source>
        <translation>ГОСТ Р 34.10-2012, %1 бит</translation>
    </message>
    <message id="trivex-app-kind-key">
        <source>This is a private key without a certificate. Import a bundle (.p12, .pfx) that holds both.</source>
        <translation>Это закрытый ключ без сертификата. Импортируйте контейнер (.p12, .pfx), где есть и то и другое.</translation>
    </message>
    <message id="trivex-app-kind-list">
        <source>This is a list of revoked certificates. Once it is among your files, it counts whenever a path is checked.</source>
        <translation>Это список отозванных сертификатов. Когда он лежит среди ваших файлов, он учитывается при каждой проверке цепочки.</translation>
    </message>
    <message id="trivex-app-kind-message">
        <source>This is a signed message. The certificates that it carries are below.</source>
        <translation>Это подписанное сообщение. Ниже сертификаты, которые в нём есть.</translation>
    </message>
    <message id="trivex-app-kind-other">
        <source>This file holds no certificates, keys or requests. Choose another one.</source>
        <translation>В этом файле нет сертификатов, ключей и запросов. Выберите другой файл.</translation>
    </message>
    <message id="trivex-app-kind-public-key">
        <source>This is a public key. It can be read here; there is nothing to import.</source>
        <translation>Это открытый ключ. Его можно посмотреть; импортировать здесь нечего.</translation>
    </message>
    <message id="trivex-app-kind-request">
        <source>This is a certificate request. Send it to a certification authority; import the certificate that comes back. Imported, it is listed among your requests.</source>
        <translation>Это запрос на сертификат. Отправьте его в удостоверяющий центр и импортируйте полученный сертификат. После импорта запрос появится среди ваших запросов.</translation>
    </message>
    <message id="trivex-app-kind-rsa">
        <source>RSA, %1 bits</source>
        <translation>RSA, %1 бит</translation>
    </message>
    <message id="trivex-app-kind-signature">
        <source>This file is a signature. Open it together with its document, under “Sign and verify”.</source>
        <translation>Этот файл — подпись. Откройте её вместе с документом в разделе «Подпись и проверка».</translation>
    </message>
    <message id="trivex-app-kind-unread-keys" numerus="yes">
        <source>%n more private keys were not looked at: a file may hold 20.</source>
        <translation>
            <numerusform>Ещё %n закрытый ключ не прочитан: в файле их может быть не больше 20.</numerusform>
            <numerusform>Ещё %n закрытых ключа не прочитаны: в файле их может быть не больше 20.</numerusform>
            <numerusform>Ещё %n закрытых ключей не прочитаны: в файле их может быть не больше 20.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-leave-alone">
        <source>The certificate of the key is not in the file.</source>
        <translation>В файле нет сертификата этого ключа.</translation>
    </message>
    <message id="trivex-app-leave-editing-confirm">
        <source>Discard</source>
        <translation>Не сохранять</translation>
    </message>
    <message id="trivex-app-leave-editing-stay">
        <source>Keep editing</source>
        <translation>Вернуться к правке</translation>
    </message>
    <message id="trivex-app-leave-editing-text">
        <source>What you changed in the request is not saved.</source>
        <translation>То, что вы изменили в запросе, не сохранено.</translation>
    </message>
    <message id="trivex-app-leave-editing-title">
        <source>Discard the changes?</source>
        <translation>Отказаться от изменений?</translation>
    </message>
    <message id="trivex-app-leave-locked">
        <source>The private key is encrypted in the file.</source>
        <translation>Закрытый ключ в файле зашифрован.</translation>
    </message>
    <message id="trivex-app-leave-no-key">
        <source>There is no private key.</source>
        <translation>Закрытого ключа нет.</translation>
    </message>
    <message id="trivex-app-list-count">
        <source>Revoked certificates</source>
        <translation>Отозвано сертификатов</translation>
    </message>
    <message id="trivex-app-list-entries">
        <source>Serial numbers, and when</source>
        <translation>Серийные номера и время отзыва</translation>
    </message>
    <message id="trivex-app-list-made">
        <source>Issued on</source>
        <translation>Выпущен</translation>
    </message>
    <message id="trivex-app-list-next">
        <source>Next update by</source>
        <translation>Следующее обновление не позднее</translation>
    </message>
    <message id="trivex-app-list-number-of">
        <source>Number</source>
        <translation>Количество</translation>
    </message>
    <message id="trivex-app-lists-changed">
        <source>The file of this list was moved or changed by another program, so it was left alone. Look at the lists again.</source>
        <translation>Другая программа переместила или изменила файл этого списка, поэтому он не удалён. Посмотрите списки ещё раз.</translation>
    </message>
    <message id="trivex-app-lists-count" numerus="yes">
        <source>%n lists of revoked certificates are among your files.</source>
        <translation>
            <numerusform>Среди ваших файлов %n список отозванных сертификатов.</numerusform>
            <numerusform>Среди ваших файлов %n списка отозванных сертификатов.</numerusform>
            <numerusform>Среди ваших файлов %n списков отозванных сертификатов.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-lists-due">
        <source>The next one is due on %1.</source>
        <translation>Следующий список ожидается %1.</translation>
    </message>
    <message id="trivex-app-lists-full">
        <source>The lists of revoked certificates among your files may have %1 MB together, and this one would be too much. Remove those that you no longer need, then import what is still ticked.</source>
        <translation>Все списки отозванных сертификатов среди ваших файлов могут занимать не больше %1 МБ, а с этим списком места не хватит. Удалите ненужные списки и снова импортируйте то, что осталось отмеченным.</translation>
    </message>
    <message id="trivex-app-lists-no-due">
        <source>The list does not say when the next one is due.</source>
        <translation>В списке не указано, когда выйдет следующий.</translation>
    </message>
    <message id="trivex-app-lists-none">
        <source>There are none among your files. Import a list like any other file.</source>
        <translation>Среди ваших файлов их нет. Список импортируется так же, как любой другой файл.</translation>
    </message>
    <message id="trivex-app-lists-really">
        <source>Remove it now</source>
        <translation>Удалить сейчас</translation>
    </message>
    <message id="trivex-app-lists-shared">
        <source>Its file holds other things too. Remove it from the folder by hand.</source>
        <translation>В том же файле есть и другое. Удалите список из папки вручную.</translation>
    </message>
    <message id="trivex-app-lists-show">
        <source>Show</source>
        <translation>Показать</translation>
    </message>
    <message id="trivex-app-lists-text">
        <source>They lie among your files and count whenever a path is checked, as far as their issuer has signed them.</source>
        <translation>Они лежат среди ваших файлов и учитываются при каждой проверке цепочки, если подписаны самим издателем.</translation>
    </message>
    <message id="trivex-app-lists-title">
        <source>Lists of revoked certificates</source>
        <translation>Списки отозванных сертификатов</translation>
    </message>
    <message id="trivex-app-loading">
        <source>Reading the stores…</source>
        <translation>Чтение хранилищ…</translation>
    </message>
    <message id="trivex-app-manual">
        <source>Manual</source>
        <translation>Руководство</translation>
    </message>
    <message id="trivex-app-manual-section">
        <source>Section of the manual</source>
        <translation>Раздел руководства</translation>
    </message>
    <message id="trivex-app-menu">
        <source>Categories</source>
        <translation>Разделы</translation>
    </message>
    <message id="trivex-app-more-rows">
        <source>More of them</source>
        <translation>Остальное</translation>
    </message>
    <message id="trivex-app-name-address">
        <source>IP address</source>
        <translation>IP-адрес</translation>
    </message>
    <message id="trivex-app-name-directory">
        <source>Directory name</source>
        <translation>Имя в каталоге (X.500)</translation>
    </message>
    <message id="trivex-app-name-edi">
        <source>EDI party</source>
        <translation>Участник EDI</translation>
    </message>
    <message id="trivex-app-name-mail">
        <source>E-mail</source>
        <translation>Эл. почта</translation>
    </message>
    <message id="trivex-app-name-other">
        <source>Other name</source>
        <translation>Другое имя</translation>
    </message>
    <message id="trivex-app-name-principal">
        <source>User principal name</source>
        <translation>Имя учётной записи</translation>
    </message>
    <message id="trivex-app-name-registered">
        <source>Registered identifier</source>
        <translation>Зарегистрированный идентификатор</translation>
    </message>
    <message id="trivex-app-name-service">
        <source>Service</source>
        <translation>Служба</translation>
    </message>
    <message id="trivex-app-name-x400">
        <source>X.400 address</source>
        <translation>Адрес X.400</translation>
    </message>
    <message id="trivex-app-name-xmpp">
        <source>XMPP address</source>
        <translation>Адрес XMPP</translation>
    </message>
    <message id="trivex-app-names-excluded">
        <source>Excluded</source>
        <translation>Запрещено</translation>
    </message>
    <message id="trivex-app-names-permitted">
        <source>Permitted</source>
        <translation>Разрешено</translation>
    </message>
    <message id="trivex-app-netscape-client">
        <source>client of a server</source>
        <translation>клиент сервера</translation>
    </message>
    <message id="trivex-app-netscape-code">
        <source>signing programs</source>
        <translation>подпись программ</translation>
    </message>
    <message id="trivex-app-netscape-code-authority">
        <source>authority for signing programs</source>
        <translation>центр для подписи программ</translation>
    </message>
    <message id="trivex-app-netscape-mail">
        <source>e-mail</source>
        <translation>электронная почта</translation>
    </message>
    <message id="trivex-app-netscape-mail-authority">
        <source>authority for e-mail</source>
        <translation>центр для электронной почты</translation>
    </message>
    <message id="trivex-app-netscape-reserved">
        <source>reserved</source>
        <translation>зарезервировано</translation>
    </message>
    <message id="trivex-app-netscape-server">
        <source>web server</source>
        <translation>веб-сервер</translation>
    </message>
    <message id="trivex-app-netscape-server-authority">
        <source>authority for servers and clients</source>
        <translation>центр для серверов и клиентов</translation>
    </message>
    <message id="trivex-app-new-officer-pin">
        <source>New administrator PIN</source>
        <translation>Новый PIN‑код администратора</translation>
    </message>
    <message id="trivex-app-new-pin">
        <source>New PIN</source>
        <translation>Новый PIN‑код</translation>
    </message>
    <message id="trivex-app-new-pin-again">
        <source>New PIN once more</source>
        <translation>Новый PIN‑код ещё раз</translation>
    </message>
    <message id="trivex-app-new-request">
        <source>New request</source>
        <translation>Новый запрос</translation>
    </message>
    <message id="trivex-app-new-token">
        <source>Make a token of your own…</source>
        <translation>Создать личный токен…</translation>
    </message>
    <message id="trivex-app-new-token-confirm">
        <source>Make the token</source>
        <translation>Создать токен</translation>
    </message>
    <message id="trivex-app-new-token-failed">
        <source>The token “%1” was not made.</source>
        <translation>Токен «%1» не создан.</translation>
    </message>
    <message id="trivex-app-new-token-made">
        <source>“%1” is ready for keys and certificates.</source>
        <translation>Токен «%1» готов: на нём можно хранить ключи и сертификаты.</translation>
    </message>
    <message id="trivex-app-new-token-name">
        <source>My token</source>
        <translation>Мой токен</translation>
    </message>
    <message id="trivex-app-new-token-officer">
        <source>The administrator PIN is the same at first. Change it in the menu of the token.</source>
        <translation>PIN‑код администратора поначалу такой же. Сменить его можно в меню токена.</translation>
    </message>
    <message id="trivex-app-new-token-text">
        <source>A private token keeps keys in a file of your own, protected by its PIN. Nobody can bring back a forgotten PIN.</source>
        <translation>Личный токен хранит ключи в вашем файле под защитой PIN‑кода. Забытый PIN‑код не восстановит никто.</translation>
    </message>
    <message id="trivex-app-new-token-title">
        <source>Make a token of your own</source>
        <translation>Новый личный токен</translation>
    </message>
    <message id="trivex-app-no">
        <source>no</source>
        <translation>нет</translation>
    </message>
    <message id="trivex-app-no-key">
        <source>There is no key to sign with. Insert a token or import a bundle.</source>
        <translation>Нет ключа для подписи. Вставьте токен или импортируйте контейнер.</translation>
    </message>
    <message id="trivex-app-no-token">
        <source>No token is connected.</source>
        <translation>Токен не подключён.</translation>
    </message>
    <message id="trivex-app-nosignature">
        <source>There is no signature file.</source>
        <translation>Файла подписи нет.</translation>
    </message>
    <message id="trivex-app-not-found">
        <source>Nothing found</source>
        <translation>Ничего не найдено</translation>
    </message>
    <message id="trivex-app-not-found-text">
        <source>The search looks at everything that the details show: names, issuers, numbers, addresses and fingerprints.</source>
        <translation>Поиск идёт по всему, что есть в сведениях: именам, издателям, номерам, адресам и отпечаткам.</translation>
    </message>
    <message id="trivex-app-not-yet-text">
        <source>It is not valid before %1. Whoever checks the signature may refuse it.</source>
        <translation>Он начнёт действовать %1. Проверяющий может не принять подпись.</translation>
    </message>
    <message id="trivex-app-nothing">
        <source>nothing</source>
        <translation>ничего</translation>
    </message>
    <message id="trivex-app-officer-pin">
        <source>Administrator PIN</source>
        <translation>PIN‑код администратора</translation>
    </message>
    <message id="trivex-app-ok">
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message id="trivex-app-old-officer-pin">
        <source>Old administrator PIN</source>
        <translation>Прежний PIN‑код администратора</translation>
    </message>
    <message id="trivex-app-old-pin">
        <source>Old PIN</source>
        <translation>Прежний PIN‑код</translation>
    </message>
    <message id="trivex-app-one-document">
        <source>One document at a time: the others were not opened.</source>
        <translation>Документы открываются по одному: остальные не открыты.</translation>
    </message>
    <message id="trivex-app-only-rsa-keys">
        <source>Only RSA keys can make this signature. Your other keys are not listed.</source>
        <translation>Такую подпись создают только ключи RSA. Другие ваши ключи не показаны.</translation>
    </message>
    <message id="trivex-app-open-file">
        <source>Open a file</source>
        <translation>Открыть файл</translation>
    </message>
    <message id="trivex-app-open-folder">
        <source>Open the folder</source>
        <translation>Открыть папку</translation>
    </message>
    <message id="trivex-app-other-names">
        <source>Other names that the certificate is for: servers, mailboxes, addresses.</source>
        <translation>Другие имена, для которых нужен сертификат: серверы, почтовые ящики, адреса.</translation>
    </message>
    <message id="trivex-app-other-names-add">
        <source>Add another name</source>
        <translation>Добавить ещё имя</translation>
    </message>
    <message id="trivex-app-other-signature">
        <source>Another signature file…</source>
        <translation>Другой файл подписи…</translation>
    </message>
    <message id="trivex-app-passwords-differ">
        <source>The two passwords differ.</source>
        <translation>Введённые пароли не совпадают.</translation>
    </message>
    <message id="trivex-app-path-missing">
        <source>There is nothing at this path. Check it, or choose from the list.</source>
        <translation>По этому пути ничего нет. Проверьте его или выберите файл из списка.</translation>
    </message>
    <message id="trivex-app-pin">
        <source>PIN</source>
        <translation>PIN‑код</translation>
    </message>
    <message id="trivex-app-pin-changed">
        <source>The PIN of “%1” is changed.</source>
        <translation>PIN‑код токена «%1» изменён.</translation>
    </message>
    <message id="trivex-app-pin-consent">
        <source>I know that a wrong PIN locks the token</source>
        <translation>Я понимаю, что неверный PIN‑код заблокирует токен</translation>
    </message>
    <message id="trivex-app-pin-final">
        <source>This is the last try: a wrong PIN locks the token.</source>
        <translation>Это последняя попытка: неверный PIN‑код заблокирует токен.</translation>
    </message>
    <message id="trivex-app-pin-length-wrong">
        <source>This length does not fit.</source>
        <translation>Такая длина не подходит.</translation>
    </message>
    <message id="trivex-app-pin-locked">
        <source>The PIN is locked. Only the token's administrator can unlock it.</source>
        <translation>PIN‑код заблокирован. Разблокировать его может только администратор токена.</translation>
    </message>
    <message id="trivex-app-pin-low">
        <source>A wrong PIN was given before. After several wrong ones the token locks itself.</source>
        <translation>До этого был введён неверный PIN‑код. После нескольких неверных токен заблокируется.</translation>
    </message>
    <message id="trivex-app-pin-of">
        <source>PIN of “%1”</source>
        <translation>PIN‑код токена «%1»</translation>
    </message>
    <message id="trivex-app-pin-pad-text">
        <source>Type the PINs at the reader: it asks for them when you go on.</source>
        <translation>Вводите PIN‑коды на считывателе: он запросит их, когда вы продолжите.</translation>
    </message>
    <message id="trivex-app-pin-replaced">
        <source>The question before is over. This is another one: type the PIN of the token named below.</source>
        <translation>Предыдущий вопрос снят. Это другой вопрос: введите PIN‑код токена, указанного ниже.</translation>
    </message>
    <message id="trivex-app-pin-title">
        <source>The token asks for its PIN</source>
        <translation>Токен запрашивает PIN‑код</translation>
    </message>
    <message id="trivex-app-pin-to-be-changed">
        <source>The PIN was given out with the token and has to be changed first.</source>
        <translation>PIN‑код выдан вместе с токеном, сначала его нужно сменить.</translation>
    </message>
    <message id="trivex-app-pin-was-set">
        <source>“%1” has its new PIN.</source>
        <translation>Для токена «%1» задан новый PIN‑код.</translation>
    </message>
    <message id="trivex-app-pin-wrong">
        <source>That PIN was not right. Type it again, or cancel.</source>
        <translation>Этот PIN‑код неверный. Введите его ещё раз или нажмите «Отмена».</translation>
    </message>
    <message id="trivex-app-pins-differ">
        <source>The two PINs differ.</source>
        <translation>Введённые PIN‑коды не совпадают.</translation>
    </message>
    <message id="trivex-app-point-issuer">
        <source>Issuer of the list</source>
        <translation>Издатель списка</translation>
    </message>
    <message id="trivex-app-point-reasons">
        <source>Only for</source>
        <translation>Только для</translation>
    </message>
    <message id="trivex-app-point-relative">
        <source>Name below the issuer's</source>
        <translation>Имя относительно издателя</translation>
    </message>
    <message id="trivex-app-policy-any">
        <source>Any policy</source>
        <translation>Любая политика</translation>
    </message>
    <message id="trivex-app-policy-domain">
        <source>Domain validated</source>
        <translation>Проверен домен</translation>
    </message>
    <message id="trivex-app-policy-extended">
        <source>Extended validation</source>
        <translation>Расширенная проверка</translation>
    </message>
    <message id="trivex-app-policy-ka1">
        <source>Signature tool of class KA1</source>
        <translation>Средство подписи класса КА1</translation>
    </message>
    <message id="trivex-app-policy-ks1">
        <source>Signature tool of class KS1</source>
        <translation>Средство подписи класса КС1</translation>
    </message>
    <message id="trivex-app-policy-ks2">
        <source>Signature tool of class KS2</source>
        <translation>Средство подписи класса КС2</translation>
    </message>
    <message id="trivex-app-policy-ks3">
        <source>Signature tool of class KS3</source>
        <translation>Средство подписи класса КС3</translation>
    </message>
    <message id="trivex-app-policy-kv1">
        <source>Signature tool of class KV1</source>
        <translation>Средство подписи класса КВ1</translation>
    </message>
    <message id="trivex-app-policy-kv2">
        <source>Signature tool of class KV2</source>
        <translation>Средство подписи класса КВ2</translation>
    </message>
    <message id="trivex-app-policy-no-mappings">
        <source>Certificates to skip before mappings count no more</source>
        <translation>Сертификатов до отмены соответствий</translation>
    </message>
    <message id="trivex-app-policy-notice">
        <source>Notice</source>
        <translation>Уведомление</translation>
    </message>
    <message id="trivex-app-policy-organization">
        <source>Organization validated</source>
        <translation>Проверена организация</translation>
    </message>
    <message id="trivex-app-policy-person">
        <source>Person validated</source>
        <translation>Проверен человек</translation>
    </message>
    <message id="trivex-app-policy-reference">
        <source>Statement of</source>
        <translation>Положение</translation>
    </message>
    <message id="trivex-app-policy-required">
        <source>Certificates to skip before a policy is required</source>
        <translation>Сертификатов до обязательной политики</translation>
    </message>
    <message id="trivex-app-policy-rules">
        <source>Rules</source>
        <translation>Регламент</translation>
    </message>
    <message id="trivex-app-preview">
        <source>Preview of the picture</source>
        <translation>Предварительный просмотр изображения</translation>
    </message>
    <message id="trivex-app-print">
        <source>Print</source>
        <translation>Печать</translation>
    </message>
    <message id="trivex-app-print-busy">
        <source>Wait until the document before is ready.</source>
        <translation>Подождите: ещё готовится предыдущий документ.</translation>
    </message>
    <message id="trivex-app-print-failed">
        <source>The document could not be opened.</source>
        <translation>Не удалось открыть документ.</translation>
    </message>
    <message id="trivex-app-print-failed-advice">
        <source>Save it as PDF and open the file with a program that prints.</source>
        <translation>Сохраните его как PDF и откройте файл в программе, которая умеет печатать.</translation>
    </message>
    <message id="trivex-app-profile">
        <source>Kind of request</source>
        <translation>Вид запроса</translation>
    </message>
    <message id="trivex-app-profile-company">
        <source>Company (Russia)</source>
        <translation>Организация (Россия)</translation>
    </message>
    <message id="trivex-app-profile-exists">
        <source>There is a kind “%1” already. Replace it, or type another name.</source>
        <translation>Вид «%1» уже есть. Замените его или введите другое название.</translation>
    </message>
    <message id="trivex-app-profile-mail">
        <source>Protected e-mail</source>
        <translation>Защищённая почта</translation>
    </message>
    <message id="trivex-app-profile-name">
        <source>Name of the kind</source>
        <translation>Название вида</translation>
    </message>
    <message id="trivex-app-profile-name-hint">
        <source>Fields and usages are kept as they are filled in now.</source>
        <translation>Поля и назначения сохранятся такими, как они заполнены сейчас.</translation>
    </message>
    <message id="trivex-app-profile-not-removed">
        <source>The kind of request was not removed.</source>
        <translation>Вид запроса не удалён.</translation>
    </message>
    <message id="trivex-app-profile-not-removed-advice">
        <source>Check that your settings folder can be written, then remove it again.</source>
        <translation>Проверьте, можно ли записывать в папку настроек, и удалите его ещё раз.</translation>
    </message>
    <message id="trivex-app-profile-person">
        <source>Person (Russia)</source>
        <translation>Физическое лицо (Россия)</translation>
    </message>
    <message id="trivex-app-profile-remove">
        <source>Remove this kind</source>
        <translation>Удалить этот вид</translation>
    </message>
    <message id="trivex-app-profile-save">
        <source>Save as your own kind</source>
        <translation>Сохранить как свой вид</translation>
    </message>
    <message id="trivex-app-profile-save-title">
        <source>Save this kind of request</source>
        <translation>Сохранить вид запроса</translation>
    </message>
    <message id="trivex-app-profile-server">
        <source>Web server</source>
        <translation>Веб-сервер</translation>
    </message>
    <message id="trivex-app-profile-simple">
        <source>Simple</source>
        <translation>Простой</translation>
    </message>
    <message id="trivex-app-profile-too-large">
        <source>This kind is too large to be read again. Remove some of its values.</source>
        <translation>Вид получился слишком большим: прочитать его снова не удастся. Удалите часть значений.</translation>
    </message>
    <message id="trivex-app-profile-unread">
        <source>This kind of request could not be read.</source>
        <translation>Этот вид запроса не удалось прочитать.</translation>
    </message>
    <message id="trivex-app-profile-unread-advice">
        <source>Its file is damaged or gone. Select another kind.</source>
        <translation>Его файл повреждён или удалён. Выберите другой вид.</translation>
    </message>
    <message id="trivex-app-profile-unsaved">
        <source>The kind was not saved. Enter another name, or check that there is room on the disk.</source>
        <translation>Вид не сохранён. Введите другое название или проверьте, есть ли место на диске.</translation>
    </message>
    <message id="trivex-app-purpose-decrypt">
        <source>to decrypt with a key on it</source>
        <translation>чтобы расшифровать данные его ключом</translation>
    </message>
    <message id="trivex-app-purpose-export">
        <source>to copy a private key from it</source>
        <translation>чтобы скопировать с него закрытый ключ</translation>
    </message>
    <message id="trivex-app-purpose-generate">
        <source>to make a key on it</source>
        <translation>чтобы создать на нём ключ</translation>
    </message>
    <message id="trivex-app-purpose-look">
        <source>to show the keys on it</source>
        <translation>чтобы показать ключи на нём</translation>
    </message>
    <message id="trivex-app-purpose-remove">
        <source>to remove something from it</source>
        <translation>чтобы удалить с него данные</translation>
    </message>
    <message id="trivex-app-purpose-sign">
        <source>to sign with a key on it</source>
        <translation>чтобы поставить подпись его ключом</translation>
    </message>
    <message id="trivex-app-purpose-write">
        <source>to write to it</source>
        <translation>чтобы записать на него данные</translation>
    </message>
    <message id="trivex-app-purposes">
        <source>What the certificate is for</source>
        <translation>Для чего нужен сертификат</translation>
    </message>
    <message id="trivex-app-qualified-device">
        <source>The key is on a qualified device</source>
        <translation>Ключ на квалифицированном устройстве</translation>
    </message>
    <message id="trivex-app-qualified-eu">
        <source>Qualified certificate of the EU</source>
        <translation>Квалифицированный сертификат ЕС</translation>
    </message>
    <message id="trivex-app-qualified-limit">
        <source>Limit of a transaction</source>
        <translation>Предел сделки</translation>
    </message>
    <message id="trivex-app-qualified-retention">
        <source>Years that documents are kept</source>
        <translation>Сколько лет хранятся документы</translation>
    </message>
    <message id="trivex-app-qualified-statements">
        <source>Statements of the authority</source>
        <translation>Положения центра</translation>
    </message>
    <message id="trivex-app-qualified-type">
        <source>What it is for</source>
        <translation>Для чего он</translation>
    </message>
    <message id="trivex-app-quit-cancel">
        <source>Keep working</source>
        <translation>Не закрывать</translation>
    </message>
    <message id="trivex-app-quit-changes">
        <source>The changes of a request are not saved.</source>
        <translation>Изменения запроса не сохранены.</translation>
    </message>
    <message id="trivex-app-quit-confirm">
        <source>Stop and close</source>
        <translation>Остановить и закрыть</translation>
    </message>
    <message id="trivex-app-quit-edit">
        <source>An edited request is being signed and saved.</source>
        <translation>Изменённый запрос подписывается и сохраняется.</translation>
    </message>
    <message id="trivex-app-quit-export">
        <source>Files are being exported.</source>
        <translation>Экспортируются файлы.</translation>
    </message>
    <message id="trivex-app-quit-filled">
        <source>A new request is filled in, but not made yet.</source>
        <translation>Новый запрос заполнен, но ещё не создан.</translation>
    </message>
    <message id="trivex-app-quit-import">
        <source>An import is being written.</source>
        <translation>Записывается импорт.</translation>
    </message>
    <message id="trivex-app-quit-removal">
        <source>Certificates or keys are being removed.</source>
        <translation>Удаляются сертификаты или ключи.</translation>
    </message>
    <message id="trivex-app-quit-request">
        <source>A key or a request is being made.</source>
        <translation>Создаётся ключ или запрос.</translation>
    </message>
    <message id="trivex-app-quit-signing">
        <source>A document is being signed, or a signature checked.</source>
        <translation>Документ подписывается, или проверяется подпись.</translation>
    </message>
    <message id="trivex-app-quit-text">
        <source>If the window closes now, work stops where it is, and what was typed is lost.</source>
        <translation>Если закрыть окно сейчас, работа остановится на полпути, а введённое пропадёт.</translation>
    </message>
    <message id="trivex-app-quit-title">
        <source>Close the window?</source>
        <translation>Закрыть окно?</translation>
    </message>
    <message id="trivex-app-quit-undo">
        <source>What was removed is being brought back.</source>
        <translation>Возвращается удалённое.</translation>
    </message>
    <message id="trivex-app-read-damaged">
        <source>What this file holds is damaged. Ask for it to be sent again.</source>
        <translation>Содержимое файла повреждено. Попросите прислать его ещё раз.</translation>
    </message>
    <message id="trivex-app-read-denied">
        <source>You may not read this file. Ask its owner for access.</source>
        <translation>Нет прав на чтение этого файла. Попросите доступ у владельца.</translation>
    </message>
    <message id="trivex-app-read-empty">
        <source>The file is empty. Ask for it to be sent again.</source>
        <translation>Файл пуст. Попросите прислать его ещё раз.</translation>
    </message>
    <message id="trivex-app-read-failed">
        <source>The file could not be read. Check the disk that it is on, or choose another file.</source>
        <translation>Не удалось прочитать файл. Проверьте диск, на котором он лежит, или выберите другой файл.</translation>
    </message>
    <message id="trivex-app-read-folder">
        <source>This is a folder. Choose a file in it.</source>
        <translation>Это папка. Выберите файл в ней.</translation>
    </message>
    <message id="trivex-app-read-missing">
        <source>The file is not there any more. Choose it again.</source>
        <translation>Файла больше нет. Выберите его ещё раз.</translation>
    </message>
    <message id="trivex-app-read-name">
        <source>The name of this file has letters in an old encoding, so it can't be opened. Rename it and choose it again.</source>
        <translation>В имени этого файла есть буквы в старой кодировке, поэтому он не открывается. Переименуйте его и выберите снова.</translation>
    </message>
    <message id="trivex-app-read-special">
        <source>This is a pipe, a device or a file of the running system. Choose an ordinary file.</source>
        <translation>Это канал, устройство или служебный файл работающей системы. Выберите обычный файл.</translation>
    </message>
    <message id="trivex-app-read-too-big">
        <source>The file is too big: 2 GB and more can't be read here. Compress it or split it.</source>
        <translation>Файл слишком велик: 2 ГБ и больше здесь не читаются. Сожмите его или разделите.</translation>
    </message>
    <message id="trivex-app-reading">
        <source>Reading the file…</source>
        <translation>Файл читается…</translation>
    </message>
    <message id="trivex-app-reason-affiliation">
        <source>the holder has changed</source>
        <translation>сведения о владельце изменились</translation>
    </message>
    <message id="trivex-app-reason-attribute">
        <source>the attribute authority's key is known to others</source>
        <translation>ключ центра атрибутов известен другим</translation>
    </message>
    <message id="trivex-app-reason-authority">
        <source>the authority's key is known to others</source>
        <translation>ключ центра известен другим</translation>
    </message>
    <message id="trivex-app-reason-cessation">
        <source>no longer needed</source>
        <translation>больше не нужен</translation>
    </message>
    <message id="trivex-app-reason-hold">
        <source>suspended</source>
        <translation>приостановлен</translation>
    </message>
    <message id="trivex-app-reason-key">
        <source>the key is known to others</source>
        <translation>ключ известен другим</translation>
    </message>
    <message id="trivex-app-reason-none">
        <source>no reason given</source>
        <translation>причина не указана</translation>
    </message>
    <message id="trivex-app-reason-privilege">
        <source>a right was withdrawn</source>
        <translation>право отозвано</translation>
    </message>
    <message id="trivex-app-reason-superseded">
        <source>replaced by another certificate</source>
        <translation>заменён другим сертификатом</translation>
    </message>
    <message id="trivex-app-reason-unhold">
        <source>no longer suspended</source>
        <translation>больше не приостановлен</translation>
    </message>
    <message id="trivex-app-refused">
        <source>The signature does not match this document and key.</source>
        <translation>Подпись не соответствует этому документу и ключу.</translation>
    </message>
    <message id="trivex-app-refused-advice">
        <source>The document was changed after signing, or another key signed it. Choose the right key, or ask for the document again.</source>
        <translation>Документ изменён после подписания или подписан другим ключом. Выберите нужный ключ или попросите прислать документ ещё раз.</translation>
    </message>
    <message id="trivex-app-remember-tokens">
        <source>Show the certificates of known tokens at once</source>
        <translation>Сразу показывать сертификаты знакомых токенов</translation>
    </message>
    <message id="trivex-app-remember-tokens-hint">
        <source>What a token shows without a PIN is kept in your cache folder. On a computer that others use under your name it tells whose tokens were here. Switching this off removes it.</source>
        <translation>То, что токен показывает без PIN‑кода, хранится в вашей папке кэша. Если за компьютером под вашим именем работают другие, по ней видно, чьи токены здесь были. При выключении всё это удаляется.</translation>
    </message>
    <message id="trivex-app-remove">
        <source>Remove…</source>
        <translation>Удалить…</translation>
    </message>
    <message id="trivex-app-remove-bundle-text">
        <source>The certificate and its private key are removed from “%1”.</source>
        <translation>Сертификат и его закрытый ключ будут удалены из хранилища «%1».</translation>
    </message>
    <message id="trivex-app-remove-bundles-text">
        <source>The certificates and the private keys that belong to them are removed from: %1.</source>
        <translation>Сертификаты вместе с их закрытыми ключами будут удалены отсюда: %1.</translation>
    </message>
    <message id="trivex-app-remove-confirm">
        <source>Remove</source>
        <translation>Удалить</translation>
    </message>
    <message id="trivex-app-remove-key-request">
        <source>Without its key a certificate is of no use: a request still waits for one. Request: %1</source>
        <translation>Без ключа сертификат бесполезен, а запрос ещё ждёт его. Запрос: %1</translation>
    </message>
    <message id="trivex-app-remove-key-warning">
        <source>The key can't be brought back. Whatever was encrypted for it stays unreadable.</source>
        <translation>Ключ нельзя вернуть. То, что для него зашифровано, останется нечитаемым.</translation>
    </message>
    <message id="trivex-app-remove-keys-text" numerus="yes">
        <source>The keys are removed from “%1”. They have no certificates there.</source>
        <translation>
            <numerusform>%n ключ будет удалён с токена «%1». Сертификата для него там нет.</numerusform>
            <numerusform>%n ключа будут удалены с токена «%1». Сертификатов для них там нет.</numerusform>
            <numerusform>%n ключей будут удалены с токена «%1». Сертификатов для них там нет.</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-keys-title" numerus="yes">
        <source>Remove these %n keys?</source>
        <translation>
            <numerusform>Удалить %n ключ?</numerusform>
            <numerusform>Удалить %n ключа?</numerusform>
            <numerusform>Удалить %n ключей?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-request-text">
        <source>The request file is deleted. Its key stays on the token.</source>
        <translation>Файл запроса будет удалён. Ключ останется на токене.</translation>
    </message>
    <message id="trivex-app-remove-request-title">
        <source>Delete this request?</source>
        <translation>Удалить этот запрос?</translation>
    </message>
    <message id="trivex-app-remove-requests-text">
        <source>The request files are deleted. Their keys stay on the token.</source>
        <translation>Файлы запросов будут удалены. Ключи останутся на токене.</translation>
    </message>
    <message id="trivex-app-remove-requests-title" numerus="yes">
        <source>Delete these %n requests?</source>
        <translation>
            <numerusform>Удалить %n запрос?</numerusform>
            <numerusform>Удалить %n запроса?</numerusform>
            <numerusform>Удалить %n запросов?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-several-text">
        <source>The certificates are removed from: %1.</source>
        <translation>Сертификаты будут удалены отсюда: %1.</translation>
    </message>
    <message id="trivex-app-remove-several-title" numerus="yes">
        <source>Remove these %n certificates?</source>
        <translation>
            <numerusform>Удалить %n сертификат?</numerusform>
            <numerusform>Удалить %n сертификата?</numerusform>
            <numerusform>Удалить %n сертификатов?</numerusform>
        </translation>
    </message>
    <message id="trivex-app-remove-text">
        <source>The certificate is removed from “%1”.</source>
        <translation>Сертификат будет удалён из хранилища «%1».</translation>
    </message>
    <message id="trivex-app-remove-title">
        <source>Remove this certificate?</source>
        <translation>Удалить этот сертификат?</translation>
    </message>
    <message id="trivex-app-removed">
        <source>Removed.</source>
        <translation>Удалено.</translation>
    </message>
    <message id="trivex-app-replace-confirm">
        <source>Replace</source>
        <translation>Заменить</translation>
    </message>
    <message id="trivex-app-replace-other">
        <source>Another name…</source>
        <translation>Другое имя…</translation>
    </message>
    <message id="trivex-app-replace-text">
        <source>A file of this name is already in the folder %1. What it holds will be lost.</source>
        <translation>Файл с таким именем уже есть в папке %1. Его содержимое будет потеряно.</translation>
    </message>
    <message id="trivex-app-replace-title">
        <source>Replace the file?</source>
        <translation>Заменить файл?</translation>
    </message>
    <message id="trivex-app-request-busy">
        <source>Another request can't be begun yet.</source>
        <translation>Новый запрос пока нельзя начать.</translation>
    </message>
    <message id="trivex-app-request-busy-advice">
        <source>Wait until the key or the request that is being made is ready, or stop it.</source>
        <translation>Дождитесь, пока будет готов ключ или запрос, который создаётся сейчас, или остановите его.</translation>
    </message>
    <message id="trivex-app-request-error-key">
        <source>The private key was not found. Insert its token and try again.</source>
        <translation>Закрытый ключ не найден. Вставьте токен с этим ключом и повторите.</translation>
    </message>
    <message id="trivex-app-request-error-make">
        <source>No key was made. Check the token and try again.</source>
        <translation>Ключ не создан. Проверьте токен и повторите.</translation>
    </message>
    <message id="trivex-app-request-error-save">
        <source>The request could not be saved. Check the request folder and try again.</source>
        <translation>Не удалось сохранить запрос. Проверьте папку запросов и повторите.</translation>
    </message>
    <message id="trivex-app-request-error-sign">
        <source>The request was not signed. The key is kept: try again.</source>
        <translation>Запрос не подписан. Ключ сохранён, попробуйте ещё раз.</translation>
    </message>
    <message id="trivex-app-request-for-key">
        <source>This request is for the key “%1”, which is on its token already.</source>
        <translation>Этот запрос — для ключа «%1», который уже есть на токене.</translation>
    </message>
    <message id="trivex-app-request-gone">
        <source>This request is no longer there.</source>
        <translation>Этого запроса больше нет.</translation>
    </message>
    <message id="trivex-app-request-gone-advice">
        <source>It was removed or renamed in the meantime. Make a new request with what you have typed.</source>
        <translation>За это время его удалили или переименовали. Создайте новый запрос с введёнными данными.</translation>
    </message>
    <message id="trivex-app-request-next">
        <source>Send this file to a certification authority. When the certificate comes, import it: it finds its key by itself.</source>
        <translation>Отправьте этот файл в удостоверяющий центр. Когда придёт сертификат, импортируйте его: он сам найдёт свой ключ.</translation>
    </message>
    <message id="trivex-app-request-no-key">
        <source>The key of this request was not found.</source>
        <translation>Ключ этого запроса не найден.</translation>
    </message>
    <message id="trivex-app-request-no-key-advice">
        <source>Insert the token on which the key was made and try again.</source>
        <translation>Вставьте токен, на котором создан ключ, и повторите.</translation>
    </message>
    <message id="trivex-app-request-not-made">
        <source>The request was not saved.</source>
        <translation>Запрос не сохранён.</translation>
    </message>
    <message id="trivex-app-request-not-saved">
        <source>The request was not saved; the earlier file is unchanged.</source>
        <translation>Запрос не сохранён; прежний файл не изменён.</translation>
    </message>
    <message id="trivex-app-request-others">
        <source>The request also holds, and keeps: %1</source>
        <translation>Также в запросе есть и остаётся без изменений: %1</translation>
    </message>
    <message id="trivex-app-request-problem-long">
        <source>This value is too long. Shorten it.</source>
        <translation>Значение слишком длинное. Сократите его.</translation>
    </message>
    <message id="trivex-app-request-problem-many">
        <source>There are more names than a certificate can have. Remove some.</source>
        <translation>Имён больше, чем может быть в сертификате. Удалите лишние.</translation>
    </message>
    <message id="trivex-app-request-problem-name">
        <source>The request has no name. Enter a name.</source>
        <translation>В запросе нет имени. Введите имя.</translation>
    </message>
    <message id="trivex-app-request-problem-type">
        <source>This field is not known. Use one of the listed fields, or a number such as 1.2.3.</source>
        <translation>Это поле неизвестно. Выберите поле из списка или укажите номер вида 1.2.3.</translation>
    </message>
    <message id="trivex-app-request-problem-value">
        <source>This value has a wrong form. Correct it.</source>
        <translation>Значение записано в неверном виде. Исправьте его.</translation>
    </message>
    <message id="trivex-app-request-stays">
        <source>The request “%1” could not be deleted.</source>
        <translation>Запрос «%1» не удалось удалить.</translation>
    </message>
    <message id="trivex-app-request-stays-advice">
        <source>Check whether you may change the request folder, and try again.</source>
        <translation>Проверьте, можно ли изменять папку запросов, и повторите.</translation>
    </message>
    <message id="trivex-app-request-unread">
        <source>The request could not be read.</source>
        <translation>Запрос не удалось прочитать.</translation>
    </message>
    <message id="trivex-app-row-menu">
        <source>Actions for the selected rows</source>
        <translation>Действия с выбранными строками</translation>
    </message>
    <message id="trivex-app-save">
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message id="trivex-app-save-as">
        <source>Save as…</source>
        <translation>Сохранить как…</translation>
    </message>
    <message id="trivex-app-save-document">
        <source>Save the document</source>
        <translation>Сохранить документ</translation>
    </message>
    <message id="trivex-app-save-pdf">
        <source>Save as PDF</source>
        <translation>Сохранить как PDF</translation>
    </message>
    <message id="trivex-app-saved">
        <source>Saved.</source>
        <translation>Сохранено.</translation>
    </message>
    <message id="trivex-app-scope-attributes">
        <source>Only attribute certificates</source>
        <translation>Только сертификаты атрибутов</translation>
    </message>
    <message id="trivex-app-scope-authorities">
        <source>Only certificates of authorities</source>
        <translation>Только сертификаты центров</translation>
    </message>
    <message id="trivex-app-scope-holders">
        <source>Only certificates of holders</source>
        <translation>Только сертификаты владельцев</translation>
    </message>
    <message id="trivex-app-scope-indirect">
        <source>Entries of other issuers</source>
        <translation>Записи других издателей</translation>
    </message>
    <message id="trivex-app-search">
        <source>Search by name, issuer, number</source>
        <translation>Поиск по имени, издателю, номеру</translation>
    </message>
    <message id="trivex-app-search-clear">
        <source>Clear the search</source>
        <translation>Очистить поиск</translation>
    </message>
    <message id="trivex-app-searching">
        <source>Searching…</source>
        <translation>Идёт поиск…</translation>
    </message>
    <message id="trivex-app-secret-hide">
        <source>Hide what is typed</source>
        <translation>Скрыть введённое</translation>
    </message>
    <message id="trivex-app-secret-show">
        <source>Show what is typed</source>
        <translation>Показать введённое</translation>
    </message>
    <message id="trivex-app-section-certificates">
        <source>Certificates</source>
        <translation>Сертификаты</translation>
    </message>
    <message id="trivex-app-serial">
        <source>Serial number</source>
        <translation>Серийный номер</translation>
    </message>
    <message id="trivex-app-serial-decimal">
        <source>Serial number, decimal</source>
        <translation>Серийный номер, десятичный</translation>
    </message>
    <message id="trivex-app-serves-client">
        <source>A person or a client shows who it is</source>
        <translation>Подтверждение личности пользователя или клиента</translation>
    </message>
    <message id="trivex-app-serves-code">
        <source>Sign programs</source>
        <translation>Подпись программ</translation>
    </message>
    <message id="trivex-app-serves-mail">
        <source>Protect e-mail</source>
        <translation>Защита электронной почты</translation>
    </message>
    <message id="trivex-app-serves-server">
        <source>A server shows who it is</source>
        <translation>Подтверждение подлинности сервера</translation>
    </message>
    <message id="trivex-app-serves-status">
        <source>Tell whether certificates are revoked</source>
        <translation>Ответы о том, отозваны ли сертификаты</translation>
    </message>
    <message id="trivex-app-serves-time">
        <source>Sign time stamps</source>
        <translation>Подпись меток времени</translation>
    </message>
    <message id="trivex-app-set-pin">
        <source>Set PIN…</source>
        <translation>Задать PIN‑код…</translation>
    </message>
    <message id="trivex-app-set-pin-title">
        <source>Set the PIN</source>
        <translation>Новый PIN‑код</translation>
    </message>
    <message id="trivex-app-settings">
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message id="trivex-app-settings-not-kept">
        <source>Your settings folder can't be written. What you choose here lasts until the program is closed.</source>
        <translation>В папку настроек нельзя записать. Выбранное здесь действует, пока программа не закрыта.</translation>
    </message>
    <message id="trivex-app-settings-not-saved">
        <source>This choice could not be saved. Check that your settings folder can be written, then choose again.</source>
        <translation>Этот выбор не удалось сохранить. Проверьте, что в папку ваших настроек можно писать, и выберите снова.</translation>
    </message>
    <message id="trivex-app-show-details">
        <source>Show details</source>
        <translation>Показать сведения</translation>
    </message>
    <message id="trivex-app-show-less">
        <source>Show less</source>
        <translation>Показать меньше</translation>
    </message>
    <message id="trivex-app-show-more">
        <source>Show all that a request can have</source>
        <translation>Показать все поля запроса</translation>
    </message>
    <message id="trivex-app-sign-action">
        <source>Sign</source>
        <translation>Подписать</translation>
    </message>
    <message id="trivex-app-sign-verify">
        <source>Sign and verify</source>
        <translation>Подпись и проверка</translation>
    </message>
    <message id="trivex-app-signature-algorithm">
        <source>Signature algorithm</source>
        <translation>Алгоритм подписи</translation>
    </message>
    <message id="trivex-app-signature-elsewhere">
        <source>Save the signature as…</source>
        <translation>Сохранить подпись как…</translation>
    </message>
    <message id="trivex-app-signature-file">
        <source>Signature file</source>
        <translation>Файл подписи</translation>
    </message>
    <message id="trivex-app-signature-form">
        <source>Kind of signature</source>
        <translation>Вид подписи</translation>
    </message>
    <message id="trivex-app-signature-group">
        <source>Signature</source>
        <translation>Подпись</translation>
    </message>
    <message id="trivex-app-signature-opened">
        <source>This file is a signature.</source>
        <translation>Этот файл — подпись.</translation>
    </message>
    <message id="trivex-app-signature-opened-advice">
        <source>Now choose the document that it was made for.</source>
        <translation>Теперь выберите документ, к которому она относится.</translation>
    </message>
    <message id="trivex-app-signature-signed">
        <source>Signature algorithm, as signed</source>
        <translation>Алгоритм подписи в подписанной части</translation>
    </message>
    <message id="trivex-app-signature-value">
        <source>Value</source>
        <translation>Значение</translation>
    </message>
    <message id="trivex-app-signature-waits">
        <source>Another file is in its place. Agree to replace it, or choose another name.</source>
        <translation>На её месте другой файл. Согласитесь его заменить или выберите другое имя.</translation>
    </message>
    <message id="trivex-app-signature-with">
        <source>%1 with %2</source>
        <translation>%1 с %2</translation>
    </message>
    <message id="trivex-app-signed">
        <source>The document is signed.</source>
        <translation>Документ подписан.</translation>
    </message>
    <message id="trivex-app-signed-attached-hint">
        <source>The document is in this file.</source>
        <translation>Документ находится в этом файле.</translation>
    </message>
    <message id="trivex-app-signed-detached-hint">
        <source>Send the document and this file together.</source>
        <translation>Отправляйте документ и этот файл вместе.</translation>
    </message>
    <message id="trivex-app-signer-changed">
        <source>The document is not the one that was signed.</source>
        <translation>Это не тот документ, который был подписан.</translation>
    </message>
    <message id="trivex-app-signer-changed-advice">
        <source>It was changed after it was signed, or the signature belongs to another document.</source>
        <translation>Его изменили после подписания, или подпись относится к другому документу.</translation>
    </message>
    <message id="trivex-app-signer-damaged">
        <source>The signature is wrong.</source>
        <translation>Подпись неверна.</translation>
    </message>
    <message id="trivex-app-signer-damaged-advice">
        <source>It was damaged or forged. Ask for it to be sent again.</source>
        <translation>Она повреждена или подделана. Попросите прислать её ещё раз.</translation>
    </message>
    <message id="trivex-app-signer-expired">
        <source>The certificate has expired. When it was signed is not stated.</source>
        <translation>Срок действия сертификата истёк. Когда поставлена подпись, не указано.</translation>
    </message>
    <message id="trivex-app-signer-expired-since">
        <source>The certificate has expired since. It was valid at the time that the signature states.</source>
        <translation>Срок действия сертификата с тех пор истёк. На момент, указанный в подписи, сертификат действовал.</translation>
    </message>
    <message id="trivex-app-signer-faulty">
        <source>The document is unchanged, but the certificate of this signature is not in order.</source>
        <translation>Документ не изменён, но сертификат этой подписи не в порядке.</translation>
    </message>
    <message id="trivex-app-signer-good">
        <source>The signature is good, and the document is unchanged.</source>
        <translation>Подпись верна, документ не изменён.</translation>
    </message>
    <message id="trivex-app-signer-issuer-only">
        <source>Issuer of the certificate: %1</source>
        <translation>Издатель сертификата: %1</translation>
    </message>
    <message id="trivex-app-signer-missing">
        <source>The certificate of this signature is missing.</source>
        <translation>Сертификата этой подписи нет.</translation>
    </message>
    <message id="trivex-app-signer-missing-advice">
        <source>Ask for the certificate, import it and verify once more.</source>
        <translation>Попросите прислать сертификат, импортируйте его и проверьте ещё раз.</translation>
    </message>
    <message id="trivex-app-signer-not-valid">
        <source>The document is unchanged, but the certificate was not valid when it was signed.</source>
        <translation>Документ не изменён, но сертификат при подписании не действовал.</translation>
    </message>
    <message id="trivex-app-signer-not-valid-advice">
        <source>Ask for it to be signed with a valid certificate.</source>
        <translation>Попросите подписать документ с действующим сертификатом.</translation>
    </message>
    <message id="trivex-app-signer-revoked">
        <source>The certificate of this signature was revoked.</source>
        <translation>Сертификат этой подписи отозван.</translation>
    </message>
    <message id="trivex-app-signer-revoked-advice">
        <source>Do not rely on it. Ask for it to be signed with another certificate.</source>
        <translation>Не полагайтесь на эту подпись. Попросите подписать документ с другим сертификатом.</translation>
    </message>
    <message id="trivex-app-signer-swapped">
        <source>This is not the certificate of the signature.</source>
        <translation>Это не тот сертификат, которым подписан документ.</translation>
    </message>
    <message id="trivex-app-signer-swapped-advice">
        <source>The signature names another certificate. Ask for the document to be signed again.</source>
        <translation>В подписи указан другой сертификат. Попросите подписать документ ещё раз.</translation>
    </message>
    <message id="trivex-app-signer-unchecked">
        <source>The signature waits for its document.</source>
        <translation>К подписи нужен её документ.</translation>
    </message>
    <message id="trivex-app-signer-unchecked-advice">
        <source>Choose the document that was signed.</source>
        <translation>Выберите документ, который был подписан.</translation>
    </message>
    <message id="trivex-app-signer-unknown">
        <source>This computer does not know the algorithm of this signature.</source>
        <translation>Этот компьютер не знает алгоритма этой подписи.</translation>
    </message>
    <message id="trivex-app-signer-unknown-advice">
        <source>Verify it on a computer that does, or ask for another signature.</source>
        <translation>Проверьте её на другом компьютере или попросите другую подпись.</translation>
    </message>
    <message id="trivex-app-signer-untrusted">
        <source>The document is unchanged. Whose signature it is can't be confirmed.</source>
        <translation>Документ не изменён. Чья это подпись, подтвердить нельзя.</translation>
    </message>
    <message id="trivex-app-signer-untrusted-advice">
        <source>No path leads from the certificate to a root that this computer trusts. If you trust the issuer, import its root certificate and verify once more.</source>
        <translation>От сертификата нет пути к корневому, которому доверяет этот компьютер. Если вы доверяете издателю, импортируйте его корневой сертификат и проверьте ещё раз.</translation>
    </message>
    <message id="trivex-app-signer-weak">
        <source>It uses an outdated digest, with which documents can be forged.</source>
        <translation>В ней устаревшая хэш-функция, с которой документ можно подделать.</translation>
    </message>
    <message id="trivex-app-signer-when">
        <source>Signed at %1, as the signature states.</source>
        <translation>Время в подписи: %1.</translation>
    </message>
    <message id="trivex-app-signer-who">
        <source>%1, certificate issued by %2</source>
        <translation>%1, сертификат выдан: %2</translation>
    </message>
    <message id="trivex-app-sort">
        <source>Sort</source>
        <translation>Сортировка</translation>
    </message>
    <message id="trivex-app-sort-ascending">
        <source>ascending</source>
        <translation>по возрастанию</translation>
    </message>
    <message id="trivex-app-sort-descending">
        <source>descending</source>
        <translation>по убыванию</translation>
    </message>
    <message id="trivex-app-sort-end">
        <source>By the end of validity</source>
        <translation>По окончанию срока</translation>
    </message>
    <message id="trivex-app-sort-issuer">
        <source>By issuer</source>
        <translation>По издателю</translation>
    </message>
    <message id="trivex-app-sort-name">
        <source>By name</source>
        <translation>По имени</translation>
    </message>
    <message id="trivex-app-sort-place">
        <source>By place</source>
        <translation>По месту</translation>
    </message>
    <message id="trivex-app-start-no-token">
        <source>There is no token yet. Insert one to make a key and a request for a certificate, import a certificate that you have, or open a file to check its signature.</source>
        <translation>Токена пока нет. Вставьте его, чтобы создать ключ и запрос на сертификат, импортируйте готовый сертификат либо откройте файл, чтобы проверить подпись.</translation>
    </message>
    <message id="trivex-app-start-title">
        <source>Begin here</source>
        <translation>С чего начать</translation>
    </message>
    <message id="trivex-app-start-token">
        <source>Your token is “%1”. Make a key and a request for a certificate on it, import a certificate or bundle that you have, or open a file to sign it or to check its signature.</source>
        <translation>Ваш токен — «%1». Создайте на нём ключ и запрос на сертификат, импортируйте готовый сертификат или контейнер либо откройте файл, чтобы подписать его или проверить подпись.</translation>
    </message>
    <message id="trivex-app-step-document">
        <source>Document</source>
        <translation>Документ</translation>
    </message>
    <message id="trivex-app-step-done">
        <source>The request is ready</source>
        <translation>Запрос готов</translation>
    </message>
    <message id="trivex-app-step-key">
        <source>1. A key on a token</source>
        <translation>1. Ключ на токене</translation>
    </message>
    <message id="trivex-app-step-signature">
        <source>Signature</source>
        <translation>Подпись</translation>
    </message>
    <message id="trivex-app-step-signer">
        <source>Key</source>
        <translation>Ключ</translation>
    </message>
    <message id="trivex-app-step-subject">
        <source>2. The holder of the certificate</source>
        <translation>2. Владелец сертификата</translation>
    </message>
    <message id="trivex-app-stop">
        <source>Stop</source>
        <translation>Остановить</translation>
    </message>
    <message id="trivex-app-structure">
        <source>Structure</source>
        <translation>Структура</translation>
    </message>
    <message id="trivex-app-system-stays">
        <source>The system's own certificates can't be removed here.</source>
        <translation>Системные сертификаты здесь не удаляются.</translation>
    </message>
    <message id="trivex-app-system-stays-advice">
        <source>They belong to the system, and its administrator changes them.</source>
        <translation>Они принадлежат системе, их меняет её администратор.</translation>
    </message>
    <message id="trivex-app-take-key">
        <source>Use this key</source>
        <translation>Использовать этот ключ</translation>
    </message>
    <message id="trivex-app-text-all">
        <source>Select all</source>
        <translation>Выделить всё</translation>
    </message>
    <message id="trivex-app-text-copy">
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message id="trivex-app-text-cut">
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message id="trivex-app-text-paste">
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message id="trivex-app-text-size">
        <source>Text size</source>
        <translation>Размер текста</translation>
    </message>
    <message id="trivex-app-token">
        <source>Token</source>
        <translation>Токен</translation>
    </message>
    <message id="trivex-app-token-abilities">
        <source>What it can do</source>
        <translation>Что он умеет</translation>
    </message>
    <message id="trivex-app-token-absent">
        <source>This token is not inserted.</source>
        <translation>Этот токен не вставлен.</translation>
    </message>
    <message id="trivex-app-token-certificates">
        <source>Certificates</source>
        <translation>Сертификаты</translation>
    </message>
    <message id="trivex-app-token-contents">
        <source>On it</source>
        <translation>На токене</translation>
    </message>
    <message id="trivex-app-token-data">
        <source>Other data</source>
        <translation>Другие данные</translation>
    </message>
    <message id="trivex-app-token-firmware">
        <source>Firmware</source>
        <translation>Прошивка</translation>
    </message>
    <message id="trivex-app-token-free">
        <source>%1 free</source>
        <translation>свободно %1</translation>
    </message>
    <message id="trivex-app-token-group">
        <source>Token</source>
        <translation>Токен</translation>
    </message>
    <message id="trivex-app-token-hardware">
        <source>Hardware</source>
        <translation>Аппаратная версия</translation>
    </message>
    <message id="trivex-app-token-keys">
        <source>Keys</source>
        <translation>Ключи</translation>
    </message>
    <message id="trivex-app-token-keys-hidden">
        <source>There may be more, which show only after the PIN.</source>
        <translation>Возможно, их больше: остальные видны только после ввода PIN‑кода.</translation>
    </message>
    <message id="trivex-app-token-label">
        <source>Name on the token</source>
        <translation>Название на самом токене</translation>
    </message>
    <message id="trivex-app-token-maker">
        <source>Maker</source>
        <translation>Изготовитель</translation>
    </message>
    <message id="trivex-app-token-menu">
        <source>Token…</source>
        <translation>Токен…</translation>
    </message>
    <message id="trivex-app-token-model">
        <source>Model</source>
        <translation>Модель</translation>
    </message>
    <message id="trivex-app-token-name">
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message id="trivex-app-token-name-hint">
        <source>Up to 32 bytes: 16 Cyrillic letters.</source>
        <translation>До 32 байт: 16 букв кириллицы.</translation>
    </message>
    <message id="trivex-app-token-new-name">
        <source>New name</source>
        <translation>Новое имя</translation>
    </message>
    <message id="trivex-app-token-no-abilities">
        <source>It neither makes keys nor signs.</source>
        <translation>Не создаёт ключей и не подписывает.</translation>
    </message>
    <message id="trivex-app-token-pin-group">
        <source>PIN</source>
        <translation>PIN‑код</translation>
    </message>
    <message id="trivex-app-token-pin-pad">
        <source>the reader's own keys</source>
        <translation>клавишах считывателя</translation>
    </message>
    <message id="trivex-app-token-pin-where">
        <source>Entered on</source>
        <translation>Вводится на</translation>
    </message>
    <message id="trivex-app-token-protected">
        <source>Write-protected</source>
        <translation>Защищён от записи</translation>
    </message>
    <message id="trivex-app-token-read-only">
        <source>This token is write-protected.</source>
        <translation>Этот токен защищён от записи.</translation>
    </message>
    <message id="trivex-app-token-removed">
        <source>removed</source>
        <translation>извлечён</translation>
    </message>
    <message id="trivex-app-token-removed-text">
        <source>This token was taken out. Its certificates return when it is inserted again.</source>
        <translation>Токен извлечён. Его сертификаты вернутся, когда вы вставите его снова.</translation>
    </message>
    <message id="trivex-app-token-secrets">
        <source>Secret keys</source>
        <translation>Секретные ключи</translation>
    </message>
    <message id="trivex-app-token-serial">
        <source>Serial number</source>
        <translation>Серийный номер</translation>
    </message>
    <message id="trivex-app-token-space">
        <source>%1 free of %2</source>
        <translation>свободно %1 из %2</translation>
    </message>
    <message id="trivex-app-token-space-row">
        <source>Space</source>
        <translation>Место</translation>
    </message>
    <message id="trivex-app-token-tries">
        <source>Tries</source>
        <translation>Попытки</translation>
    </message>
    <message id="trivex-app-token-wants-pin">
        <source>Wants a PIN</source>
        <translation>Требует PIN‑код</translation>
    </message>
    <message id="trivex-app-tokens">
        <source>Tokens</source>
        <translation>Токены</translation>
    </message>
    <message id="trivex-app-too-large-to-show">
        <source>It is too large to be shown here. Export it as a file.</source>
        <translation>Содержимое слишком велико, чтобы показать его здесь. Сохраните его в файл.</translation>
    </message>
    <message id="trivex-app-tool-authority">
        <source>Tool of the authority</source>
        <translation>Средство удостоверяющего центра</translation>
    </message>
    <message id="trivex-app-tool-authority-proof">
        <source>Conformity of the authority's tool</source>
        <translation>Заключение о средстве центра</translation>
    </message>
    <message id="trivex-app-tool-signature">
        <source>Tool</source>
        <translation>Средство подписи</translation>
    </message>
    <message id="trivex-app-tool-signature-proof">
        <source>Conformity of the tool</source>
        <translation>Заключение о средстве подписи</translation>
    </message>
    <message id="trivex-app-transparency-log">
        <source>Log</source>
        <translation>Журнал</translation>
    </message>
    <message id="trivex-app-transparency-time">
        <source>Entered</source>
        <translation>Внесён</translation>
    </message>
    <message id="trivex-app-tries-all">
        <source>no wrong PIN is reported</source>
        <translation>ошибок ввода не отмечено</translation>
    </message>
    <message id="trivex-app-tries-fewer">
        <source>fewer than at first</source>
        <translation>меньше, чем вначале</translation>
    </message>
    <message id="trivex-app-tries-none">
        <source>none, the PIN is locked</source>
        <translation>нет, PIN‑код заблокирован</translation>
    </message>
    <message id="trivex-app-tries-not-set">
        <source>no PIN is set</source>
        <translation>PIN‑код не задан</translation>
    </message>
    <message id="trivex-app-tries-one">
        <source>one</source>
        <translation>одна</translation>
    </message>
    <message id="trivex-app-unblock">
        <source>Unlock</source>
        <translation>Разблокировать</translation>
    </message>
    <message id="trivex-app-set-it">
        <source>Set</source>
        <translation>Задать</translation>
    </message>
    <message id="trivex-app-unblock-pin">
        <source>Unlock PIN…</source>
        <translation>Разблокировать PIN‑код…</translation>
    </message>
    <message id="trivex-app-unblock-pin-title">
        <source>Unlock the PIN</source>
        <translation>Разблокировка PIN‑кода</translation>
    </message>
    <message id="trivex-app-undo">
        <source>Undo</source>
        <translation>Вернуть</translation>
    </message>
    <message id="trivex-app-undo-failed">
        <source>What was removed could not be brought back.</source>
        <translation>Удалённое не удалось вернуть.</translation>
    </message>
    <message id="trivex-app-undo-no-token">
        <source>The token is not there. Insert it and try again.</source>
        <translation>Токен не подключён. Подключите его и повторите.</translation>
    </message>
    <message id="trivex-app-undo-taken">
        <source>There is another request of this name by now. Rename it and try again.</source>
        <translation>Запрос с таким именем уже есть. Переименуйте его и повторите.</translation>
    </message>
    <message id="trivex-app-undone" numerus="yes">
        <source>%n items are back</source>
        <translation>
            <numerusform>Возвращён %n объект</numerusform>
            <numerusform>Возвращены %n объекта</numerusform>
            <numerusform>Возвращено %n объектов</numerusform>
        </translation>
    </message>
    <message id="trivex-app-unfit-keys">
        <source>Keys that their token cannot sign with are not listed.</source>
        <translation>Ключи, которыми их токен не может подписывать, не показаны.</translation>
    </message>
    <message id="trivex-app-unique-holder">
        <source>Unique identifier of the holder</source>
        <translation>Уникальный идентификатор владельца</translation>
    </message>
    <message id="trivex-app-unique-issuer">
        <source>Unique identifier of the issuer</source>
        <translation>Уникальный идентификатор издателя</translation>
    </message>
    <message id="trivex-app-unsigned">
        <source>The document was not signed.</source>
        <translation>Документ не подписан.</translation>
    </message>
    <message id="trivex-app-unsigned-advice">
        <source>Check the token, or choose an RSA key: only these can sign here.</source>
        <translation>Проверьте токен или выберите ключ RSA: здесь подписывают только такие.</translation>
    </message>
    <message id="trivex-app-until">
        <source>until %1</source>
        <translation>до %1</translation>
    </message>
    <message id="trivex-app-unwritten">
        <source>The signature could not be written.</source>
        <translation>Не удалось записать подпись.</translation>
    </message>
    <message id="trivex-app-usage-agree">
        <source>Agree on keys</source>
        <translation>Согласование ключей</translation>
    </message>
    <message id="trivex-app-usage-agreement">
        <source>key agreement</source>
        <translation>согласование ключей</translation>
    </message>
    <message id="trivex-app-usage-certificates">
        <source>signing certificates</source>
        <translation>подпись сертификатов</translation>
    </message>
    <message id="trivex-app-usage-commit">
        <source>Sign for good, not to be denied</source>
        <translation>Подпись, от которой нельзя отказаться</translation>
    </message>
    <message id="trivex-app-usage-commitment">
        <source>non-repudiation</source>
        <translation>неотрекаемость</translation>
    </message>
    <message id="trivex-app-usage-data-encryption">
        <source>encrypting data</source>
        <translation>шифрование данных</translation>
    </message>
    <message id="trivex-app-usage-decipher">
        <source>agreement for decrypting only</source>
        <translation>согласование только для расшифрования</translation>
    </message>
    <message id="trivex-app-usage-decrypt-only">
        <source>Agree on keys to decrypt only</source>
        <translation>Согласование ключей только для расшифрования</translation>
    </message>
    <message id="trivex-app-usage-encipher">
        <source>agreement for encrypting only</source>
        <translation>согласование только для шифрования</translation>
    </message>
    <message id="trivex-app-usage-encrypt-data">
        <source>Encrypt data</source>
        <translation>Шифрование данных</translation>
    </message>
    <message id="trivex-app-usage-encrypt-keys">
        <source>Encrypt keys</source>
        <translation>Шифрование ключей</translation>
    </message>
    <message id="trivex-app-usage-encrypt-only">
        <source>Agree on keys to encrypt only</source>
        <translation>Согласование ключей только для шифрования</translation>
    </message>
    <message id="trivex-app-usage-key-encryption">
        <source>encrypting keys</source>
        <translation>шифрование ключей</translation>
    </message>
    <message id="trivex-app-usage-lists">
        <source>signing lists of revoked certificates</source>
        <translation>подпись списков отозванных сертификатов</translation>
    </message>
    <message id="trivex-app-usage-sign">
        <source>Sign data</source>
        <translation>Подпись данных</translation>
    </message>
    <message id="trivex-app-usage-sign-certificates">
        <source>Sign certificates</source>
        <translation>Подпись сертификатов</translation>
    </message>
    <message id="trivex-app-usage-sign-lists">
        <source>Sign lists of revoked certificates</source>
        <translation>Подпись списков отозванных сертификатов</translation>
    </message>
    <message id="trivex-app-usage-signature">
        <source>digital signature</source>
        <translation>цифровая подпись</translation>
    </message>
    <message id="trivex-app-usages">
        <source>What the key does</source>
        <translation>Что делает ключ</translation>
    </message>
    <message id="trivex-app-use-any">
        <source>Any purpose</source>
        <translation>Любое назначение</translation>
    </message>
    <message id="trivex-app-use-client">
        <source>Client of a server</source>
        <translation>Клиент сервера</translation>
    </message>
    <message id="trivex-app-use-code">
        <source>Signing programs</source>
        <translation>Подпись программ</translation>
    </message>
    <message id="trivex-app-use-documents">
        <source>Signing documents</source>
        <translation>Подпись документов</translation>
    </message>
    <message id="trivex-app-use-email">
        <source>Protecting e-mail</source>
        <translation>Защита электронной почты</translation>
    </message>
    <message id="trivex-app-use-files">
        <source>Encrypting files</source>
        <translation>Шифрование файлов</translation>
    </message>
    <message id="trivex-app-use-ipsec">
        <source>IPsec</source>
        <translation>IPsec</translation>
    </message>
    <message id="trivex-app-use-logon">
        <source>Signing in with a token</source>
        <translation>Вход в систему с токеном</translation>
    </message>
    <message id="trivex-app-use-ocsp">
        <source>Answers about revocation (OCSP)</source>
        <translation>Ответы об отзыве (OCSP)</translation>
    </message>
    <message id="trivex-app-use-server">
        <source>Web server</source>
        <translation>Веб-сервер</translation>
    </message>
    <message id="trivex-app-use-time">
        <source>Time stamps</source>
        <translation>Штампы времени</translation>
    </message>
    <message id="trivex-app-valid-from">
        <source>Valid from</source>
        <translation>Действует с</translation>
    </message>
    <message id="trivex-app-valid-until">
        <source>Valid until</source>
        <translation>Действует до</translation>
    </message>
    <message id="trivex-app-validity-elapsed">
        <source>Share of the validity period that has passed</source>
        <translation>Прошедшая часть срока действия</translation>
    </message>
    <message id="trivex-app-validity-expired">
        <source>Expired</source>
        <translation>Истёк</translation>
    </message>
    <message id="trivex-app-validity-expiring">
        <source>Expires soon</source>
        <translation>Истекает</translation>
    </message>
    <message id="trivex-app-validity-group">
        <source>Validity</source>
        <translation>Срок действия</translation>
    </message>
    <message id="trivex-app-validity-not-yet">
        <source>Not yet valid</source>
        <translation>Ещё не действует</translation>
    </message>
    <message id="trivex-app-validity-valid">
        <source>Valid</source>
        <translation>Действителен</translation>
    </message>
    <message id="trivex-app-verified">
        <source>The signature is good.</source>
        <translation>Подпись верна.</translation>
    </message>
    <message id="trivex-app-verified-by">
        <source>Signed by %1; the document is unchanged.</source>
        <translation>Подписал(а): %1; документ не изменён.</translation>
    </message>
    <message id="trivex-app-verify-action">
        <source>Verify</source>
        <translation>Проверить</translation>
    </message>
    <message id="trivex-app-verify-failed">
        <source>The signature was not verified.</source>
        <translation>Подпись не проверена.</translation>
    </message>
    <message id="trivex-app-verify-moved">
        <source>A file was changed while it was being read. Verify once more.</source>
        <translation>Файл изменился во время чтения. Проверьте ещё раз.</translation>
    </message>
    <message id="trivex-app-verify-no-document">
        <source>The signature waits for its document. Choose the document that was signed.</source>
        <translation>К подписи нужен её документ. Выберите документ, который был подписан.</translation>
    </message>
    <message id="trivex-app-verify-no-message">
        <source>This file is not a signature that can be read. Ask for it to be sent again.</source>
        <translation>В этом файле нет подписи, которую можно прочитать. Попросите прислать его ещё раз.</translation>
    </message>
    <message id="trivex-app-verify-not-written">
        <source>The document could not be written. Choose another folder or check the disk.</source>
        <translation>Документ не удалось записать. Выберите другую папку или проверьте диск.</translation>
    </message>
    <message id="trivex-app-verify-stopped">
        <source>Verifying was stopped. Start again when you like.</source>
        <translation>Проверка остановлена. Начните снова, когда захотите.</translation>
    </message>
    <message id="trivex-app-version">
        <source>Version</source>
        <translation>Версия</translation>
    </message>
    <message id="trivex-app-view">
        <source>View</source>
        <translation>Посмотреть</translation>
    </message>
    <message id="trivex-app-work">
        <source>What you can do</source>
        <translation>Действия</translation>
    </message>
    <message id="trivex-app-write-denied">
        <source>You may not write to this folder. Choose another one.</source>
        <translation>Нет прав на запись в эту папку. Выберите другую.</translation>
    </message>
    <message id="trivex-app-write-failed">
        <source>The file could not be written whole. Choose another folder or check the disk.</source>
        <translation>Файл не удалось записать целиком. Выберите другую папку или проверьте диск.</translation>
    </message>
    <message id="trivex-app-write-full">
        <source>The disk is full. Free some space or choose another folder.</source>
        <translation>Диск заполнен. Освободите место или выберите другую папку.</translation>
    </message>
    <message id="trivex-app-write-is-folder">
        <source>There is a folder of this name. Choose another name.</source>
        <translation>Уже есть папка с таким именем. Выберите другое имя.</translation>
    </message>
    <message id="trivex-app-write-no-folder">
        <source>The folder does not exist any more. Choose another one.</source>
        <translation>Этой папки больше нет. Выберите другую.</translation>
    </message>
    <message id="trivex-app-write-no-temporary">
        <source>The folder for temporary files (%1) can't be used. Free some space there or choose another one (TMPDIR), then start the program again.</source>
        <translation>Папку для временных файлов (%1) использовать нельзя. Освободите в ней место или укажите другую (TMPDIR) и запустите программу снова.</translation>
    </message>
    <message id="trivex-app-write-read-only">
        <source>This disk is write-protected. Choose another folder.</source>
        <translation>Этот диск защищён от записи. Выберите другую папку.</translation>
    </message>
    <message id="trivex-app-yes">
        <source>yes</source>
        <translation>да</translation>
    </message>
    <message id="trivex-console-about">
        <source>Certificates, keys and requests</source>
        <translation>Сертификаты, ключи и запросы</translation>
    </message>
    <message id="trivex-console-attached">
        <source>Put the document into the signature (.p7m).</source>
        <translation>Вложить документ в подпись (.p7m).</translation>
    </message>
    <message id="trivex-console-broken" numerus="yes">
        <source>%1: %n parts are damaged and left out</source>
        <translation>
            <numerusform>%1: %n часть повреждена и пропущена</numerusform>
            <numerusform>%1: %n части повреждены и пропущены</numerusform>
            <numerusform>%1: %n частей повреждено и пропущено</numerusform>
        </translation>
    </message>
    <message id="trivex-console-document">
        <source>holds no certificate, request, list, key or bundle</source>
        <translation>в файле нет ни сертификата, ни запроса, ни списка отзыва, ни ключа, ни контейнера</translation>
    </message>
    <message id="trivex-console-document-option">
        <source>The document that the signature belongs to.</source>
        <translation>Документ, к которому относится подпись.</translation>
    </message>
    <message id="trivex-console-empty">
        <source>holds no certificates</source>
        <translation>не содержит сертификатов</translation>
    </message>
    <message id="trivex-console-exists">
        <source>%1 exists; --replace replaces it.</source>
        <translation>%1 уже есть; --replace заменит файл.</translation>
    </message>
    <message id="trivex-console-files">
        <source>files</source>
        <translation>файлы</translation>
    </message>
    <message id="trivex-console-files-about">
        <source>Certificates, bundles or documents; without another option they open in the window.</source>
        <translation>Сертификаты, контейнеры или документы; без других параметров они открываются в окне.</translation>
    </message>
    <message id="trivex-console-incomplete">
        <source>Not all stores have answered within a minute: certificates may be missing here.</source>
        <translation>Не все хранилища ответили за минуту: здесь могут быть не все сертификаты.</translation>
    </message>
    <message id="trivex-console-json">
        <source>Answer in JSON (UTF-8), for programs.</source>
        <translation>Ответить в формате JSON (UTF-8), для программ.</translation>
    </message>
    <message id="trivex-console-key">
        <source>Whose key signs: the name of its certificate, or its SHA-256 fingerprint.</source>
        <translation>Чьим ключом подписать: имя в сертификате или его отпечаток SHA-256.</translation>
    </message>
    <message id="trivex-console-key-elsewhere">
        <source>The certificate “%1” is here, but not its key. Insert the token that holds the key, or choose a certificate that --list shows with its key. Without a key:</source>
        <translation>Сертификат «%1» здесь есть, а его ключа нет. Подключите токен с ключом или выберите сертификат, который --list показывает с ключом. Без ключа:</translation>
    </message>
    <message id="trivex-console-list">
        <source>List the certificates of the tokens, of your own store and of the system.</source>
        <translation>Перечислить сертификаты токенов, вашего хранилища и системы.</translation>
    </message>
    <message id="trivex-console-lost-answer">
        <source>The answer could not be written: %1</source>
        <translation>Не удалось записать ответ: %1</translation>
    </message>
    <message id="trivex-console-name-unsure">
        <source>Not signed: “%1” may be the name of a key on what is missing, too. To sign with the key that is here, name it by its SHA-256 fingerprint, which stands first, or by its id:</source>
        <translation>Не подписано: ключ с именем «%1» может быть и на том, чего здесь нет. Чтобы подписать найденным ключом, укажите его отпечаток SHA-256, он стоит первым, или идентификатор:</translation>
    </message>
    <message id="trivex-console-needs-file">
        <source>%1 needs a file.</source>
        <translation>Для %1 нужен файл.</translation>
    </message>
    <message id="trivex-console-needs-key">
        <source>--sign needs --key: the name of a certificate with a key, as --list shows it.</source>
        <translation>Для --sign нужен --key: имя в сертификате с ключом, как его показывает --list.</translation>
    </message>
    <message id="trivex-console-no-display">
        <source>There is no display for the window here. See --help for what works without one.</source>
        <translation>Здесь нет экрана, на котором можно открыть окно. Что работает без него, показывает --help.</translation>
    </message>
    <message id="trivex-console-no-file">
        <source>There is no such file.</source>
        <translation>Такого файла нет.</translation>
    </message>
    <message id="trivex-console-no-pin">
        <source>%1 holds no PIN, or can't be read.</source>
        <translation>В %1 нет PIN-кода, или файл не читается.</translation>
    </message>
    <message id="trivex-console-no-such-key">
        <source>No certificate has the name, the fingerprint or the id “%1”. See --list.</source>
        <translation>Нет сертификата, у которого имя, отпечаток или идентификатор «%1». См. --list.</translation>
    </message>
    <message id="trivex-console-no-terminal">
        <source>is a bundle: its password is asked for at a terminal, or see --password-file</source>
        <translation>это контейнер: пароль спрашивается в терминале; см. также --password-file</translation>
    </message>
    <message id="trivex-console-one-file">
        <source>%1 takes one file.</source>
        <translation>%1 принимает один файл.</translation>
    </message>
    <message id="trivex-console-one-work">
        <source>%1 and %2 exclude each other.</source>
        <translation>%1 и %2 исключают друг друга.</translation>
    </message>
    <message id="trivex-console-option-alone">
        <source>%1 does not fit here. See --help.</source>
        <translation>%1 здесь не подходит. См. --help.</translation>
    </message>
    <message id="trivex-console-output">
        <source>Write the signature to this file.</source>
        <translation>Записать подпись в этот файл.</translation>
    </message>
    <message id="trivex-console-password">
        <source>Password of %1:</source>
        <translation>Пароль для %1:</translation>
    </message>
    <message id="trivex-console-password-file">
        <source>Take the password of a bundle from the first line of this file.</source>
        <translation>Взять пароль контейнера из первой строки этого файла.</translation>
    </message>
    <message id="trivex-console-pin">
        <source>PIN of %1, %2:</source>
        <translation>PIN-код токена %1, %2:</translation>
    </message>
    <message id="trivex-console-pin-file">
        <source>Take the PIN of the token from the first line of this file.</source>
        <translation>Взять PIN-код токена из первой строки этого файла.</translation>
    </message>
    <message id="trivex-console-pin-not-tried">
        <source>The PIN in the file is not tried: a wrong one could lock the token. Type the PIN.</source>
        <translation>PIN-код из файла не используется: неверный может заблокировать токен. Введите PIN-код.</translation>
    </message>
    <message id="trivex-console-raw-signature">
        <source>is a signature and nothing else</source>
        <translation>файл содержит только подпись</translation>
    </message>
    <message id="trivex-console-reading">
        <source>Reading the tokens…</source>
        <translation>Читаются токены…</translation>
    </message>
    <message id="trivex-console-replace">
        <source>Replace the file of the signature where there is one.</source>
        <translation>Заменить файл подписи, если он уже есть.</translation>
    </message>
    <message id="trivex-console-several-keys">
        <source>Several certificates fit. Name one by its SHA-256 fingerprint, which stands first here, or by its id:</source>
        <translation>Подходит несколько сертификатов. Укажите отпечаток SHA-256, он стоит первым, или идентификатор:</translation>
    </message>
    <message id="trivex-console-show">
        <source>Show everything in the files: certificates, requests, lists, keys and bundles.</source>
        <translation>Показать всё, что есть в файлах: сертификаты, запросы, списки отзыва, ключи и контейнеры.</translation>
    </message>
    <message id="trivex-console-sign">
        <source>Sign the file with the key that --key names; the result (CMS) lies beside it.</source>
        <translation>Подписать файл ключом, который назван в --key; подпись (CMS) ляжет рядом.</translation>
    </message>
    <message id="trivex-console-silent-module">
        <source>The module %1 has not answered within a minute: its tokens are missing here.</source>
        <translation>Модуль %1 не ответил за минуту: его токенов здесь нет.</translation>
    </message>
    <message id="trivex-console-store" numerus="yes">
        <source>%1: %n certificates</source>
        <translation>
            <numerusform>%1: %n сертификат</numerusform>
            <numerusform>%1: %n сертификата</numerusform>
            <numerusform>%1: %n сертификатов</numerusform>
        </translation>
    </message>
    <message id="trivex-console-store-unread">
        <source>%1: not read</source>
        <translation>%1: не прочитан</translation>
    </message>
    <message id="trivex-console-takes-no-file">
        <source>%1 takes no file.</source>
        <translation>%1 не принимает файлов.</translation>
    </message>
    <message id="trivex-console-token-part">
        <source>There are certificates on it that could not be read, and are missing here.</source>
        <translation>На нём есть сертификаты, которые не удалось прочитать: здесь их нет.</translation>
    </message>
    <message id="trivex-console-token-unread">
        <source>It has not been read to its end in time.</source>
        <translation>Он не прочитан до конца за отведённое время.</translation>
    </message>
    <message id="trivex-console-unread">
        <source>The token %1 could not be read: %2</source>
        <translation>Токен %1 не удалось прочитать: %2</translation>
    </message>
    <message id="trivex-console-value">
        <source>text</source>
        <translation>текст</translation>
    </message>
    <message id="trivex-console-verify">
        <source>Check the signatures in the file, or those of the file in the .p7s beside it.</source>
        <translation>Проверить подписи в файле или подписи файла, лежащие рядом в .p7s.</translation>
    </message>
    <message id="trivex-console-with-key">
        <source>with its key</source>
        <translation>с ключом</translation>
    </message>
    <message id="trivex-console-wrong-password">
        <source>The password is wrong.</source>
        <translation>Неверный пароль.</translation>
    </message>
    <message id="trivex-app-chain-algorithm">
        <source>This computer can't check its signature: it does not know the algorithm.</source>
        <translation>Этот компьютер не может проверить его подпись: алгоритм ему не известен.</translation>
    </message>
    <message id="trivex-app-chain-all-good">
        <source>All is well up to a root that is trusted on this computer.</source>
        <translation>Всё в порядке вплоть до корневого сертификата, доверенного на этом компьютере.</translation>
    </message>
    <message id="trivex-app-chain-another">
        <source>Ask its holder for another certificate.</source>
        <translation>Попросите у владельца другой сертификат.</translation>
    </message>
    <message id="trivex-app-chain-at-step">
        <source>“%1”: %2</source>
        <translation>%1. %2</translation>
    </message>
    <message id="trivex-app-chain-bad">
        <source>Not to be trusted</source>
        <translation>Доверять нельзя</translation>
    </message>
    <message id="trivex-app-chain-clock">
        <source>Check the date of this computer.</source>
        <translation>Проверьте дату на этом компьютере.</translation>
    </message>
    <message id="trivex-app-chain-date">
        <source>On the date</source>
        <translation>На дату</translation>
    </message>
    <message id="trivex-app-chain-doubtful">
        <source>With a reservation</source>
        <translation>С оговоркой</translation>
    </message>
    <message id="trivex-app-chain-elsewhere">
        <source>Install what OpenSSL needs for this algorithm, or check it on another computer.</source>
        <translation>Установите для OpenSSL поддержку этого алгоритма или проверьте на другом компьютере.</translation>
    </message>
    <message id="trivex-app-chain-expired">
        <source>It ended on %1.</source>
        <translation>Срок действия закончился %1.</translation>
    </message>
    <message id="trivex-app-chain-extension">
        <source>It has a condition that this program does not know.</source>
        <translation>В нём есть условие, которое этой программе не известно.</translation>
    </message>
    <message id="trivex-app-chain-find-issuer">
        <source>Take the certificate from the site of that issuer and import it.</source>
        <translation>Возьмите сертификат на сайте этого издателя и импортируйте его.</translation>
    </message>
    <message id="trivex-app-chain-good">
        <source>Trusted</source>
        <translation>Доверенный</translation>
    </message>
    <message id="trivex-app-chain-issuer-differs">
        <source>The certificate of “%1” that is on this computer has another key than its issuer.</source>
        <translation>У сертификата «%1» на этом компьютере другой ключ, чем у издателя.</translation>
    </message>
    <message id="trivex-app-chain-issuer-missing">
        <source>The certificate of its issuer “%1” is not on this computer.</source>
        <translation>На этом компьютере нет сертификата издателя «%1».</translation>
    </message>
    <message id="trivex-app-chain-key-of-anybody">
        <source>Everybody can sign in its name: its key protects nothing.</source>
        <translation>Подписать от его имени может кто угодно: его ключ ничего не защищает.</translation>
    </message>
    <message id="trivex-app-chain-list-expired">
        <source>The list of revoked certificates ended on %1: what was revoked later is not known here.</source>
        <translation>Список отозванных сертификатов действовал до %1: о более поздних отзывах здесь не известно.</translation>
    </message>
    <message id="trivex-app-chain-list-not-yet">
        <source>The list of revoked certificates is valid from %1 on only.</source>
        <translation>Список отозванных сертификатов начинает действовать только %1.</translation>
    </message>
    <message id="trivex-app-chain-list-unreadable">
        <source>The list of revoked certificates can't be understood in full, and does not count.</source>
        <translation>Список отозванных сертификатов не удалось разобрать полностью, он не учитывается.</translation>
    </message>
    <message id="trivex-app-chain-malformed">
        <source>It breaks the rules for certificates.</source>
        <translation>Он составлен с нарушением правил.</translation>
    </message>
    <message id="trivex-app-chain-name">
        <source>Its issuer “%1” may not issue certificates for such a name.</source>
        <translation>Издателю «%1» не разрешено выпускать сертификаты на такое имя.</translation>
    </message>
    <message id="trivex-app-chain-new-list">
        <source>Save the newest list of its issuer in the folder %1, with a name that ends in “.crl”.</source>
        <translation>Сохраните свежий список издателя в папке %1 под именем, которое кончается на «.crl».</translation>
    </message>
    <message id="trivex-app-chain-no-authority">
        <source>It may not issue certificates, and has issued one.</source>
        <translation>Ему не разрешено выпускать сертификаты, но он выпустил другой.</translation>
    </message>
    <message id="trivex-app-chain-no-date">
        <source>an unknown date</source>
        <translation>неизвестно когда</translation>
    </message>
    <message id="trivex-app-chain-not-listed">
        <source>Whether it was revoked was not looked at: no list of its issuer is here.</source>
        <translation>Отозван ли он, не проверялось: списка его издателя здесь нет.</translation>
    </message>
    <message id="trivex-app-chain-not-yet">
        <source>It is valid from %1 on only.</source>
        <translation>Начинает действовать только %1.</translation>
    </message>
    <message id="trivex-app-chain-other">
        <source>It could not be checked.</source>
        <translation>Проверить его не удалось.</translation>
    </message>
    <message id="trivex-app-chain-purpose">
        <source>It is meant for something else.</source>
        <translation>Он предназначен для другого.</translation>
    </message>
    <message id="trivex-app-chain-refuse">
        <source>Do not rely on it.</source>
        <translation>Не полагайтесь на него.</translation>
    </message>
    <message id="trivex-app-chain-renew">
        <source>Ask its issuer for a new certificate.</source>
        <translation>Запросите у издателя новый сертификат.</translation>
    </message>
    <message id="trivex-app-chain-revoked">
        <source>It is revoked since %1.</source>
        <translation>Отозван %1.</translation>
    </message>
    <message id="trivex-app-chain-revoked-later">
        <source>It was not revoked at that time; it is since %1.</source>
        <translation>На эту дату ещё не был отозван; отозван %1.</translation>
    </message>
    <message id="trivex-app-chain-root">
        <source>This root is none of those that are trusted on this computer.</source>
        <translation>Этого корневого сертификата нет среди доверенных на этом компьютере.</translation>
    </message>
    <message id="trivex-app-chain-running">
        <source>Checking…</source>
        <translation>Проверяется…</translation>
    </message>
    <message id="trivex-app-chain-self-signed">
        <source>It vouches for itself, and is none of the roots that are trusted on this computer.</source>
        <translation>Он подписан сам собой, и среди доверенных на этом компьютере его нет.</translation>
    </message>
    <message id="trivex-app-chain-show-step">
        <source>Show this certificate</source>
        <translation>Показать этот сертификат</translation>
    </message>
    <message id="trivex-app-chain-signature">
        <source>Its signature is wrong: it was changed, or it is not from its issuer “%1”.</source>
        <translation>Подпись неверна: сертификат изменён или выпущен не издателем «%1».</translation>
    </message>
    <message id="trivex-app-chain-steps">
        <source>The path to the root</source>
        <translation>Цепочка до корневого сертификата</translation>
    </message>
    <message id="trivex-app-chain-this-file">
        <source>This file</source>
        <translation>Этот файл</translation>
    </message>
    <message id="trivex-app-chain-title">
        <source>Trust</source>
        <translation>Доверие</translation>
    </message>
    <message id="trivex-app-chain-today">
        <source>today</source>
        <translation>сегодня</translation>
    </message>
    <message id="trivex-app-chain-too-long">
        <source>The path is too long.</source>
        <translation>Цепочка слишком длинная.</translation>
    </message>
    <message id="trivex-app-chain-too-many">
        <source>There are more authorities below it than it allows.</source>
        <translation>Ниже него больше удостоверяющих центров, чем он допускает.</translation>
    </message>
    <message id="trivex-app-chain-trust-it">
        <source>If you know whose it is and trust it, import it into your own files.</source>
        <translation>Если вы знаете, чей он, и доверяете ему, импортируйте его в свои файлы.</translation>
    </message>
    <message id="trivex-app-chain-trusted-root">
        <source>Trusted root</source>
        <translation>Доверенный корневой сертификат</translation>
    </message>
    <message id="trivex-app-chain-unknown">
        <source>Can't be checked</source>
        <translation>Проверить нельзя</translation>
    </message>
    <message id="trivex-app-chain-unreadable">
        <source>The path of this certificate can't be looked for: it can't be read in full.</source>
        <translation>Цепочку этого сертификата построить нельзя: он читается не полностью.</translation>
    </message>
    <message id="trivex-app-chain-weak-key">
        <source>Its key is too short to be safe.</source>
        <translation>Его ключ слишком короткий, чтобы быть надёжным.</translation>
    </message>
    <message id="trivex-app-chain-weak-signature">
        <source>It is signed in a way that is no longer safe.</source>
        <translation>Он подписан способом, который уже ненадёжен.</translation>
    </message>
    <message id="trivex-app-chain-with-reason">
        <source>%1 The reason: %2.</source>
        <translation>%1 Причина: %2.</translation>
    </message>
    <message id="trivex-app-chain-wrong-date">
        <source>This is no date. Type it as %1.</source>
        <translation>Это не дата. Введите её так: %1.</translation>
    </message>
</context>
</TS>
