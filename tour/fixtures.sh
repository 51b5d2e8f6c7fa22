# shellcheck shell=sh
# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# What the tour works on, made anew each time with openssl, softhsm2-util and pkcs11-tool in
# "$directory".

find_softhsm() {
    for file in /usr/lib/softhsm/libsofthsm2.so /usr/lib/*/softhsm/libsofthsm2.so \
        /usr/lib/pkcs11/libsofthsm2.so; do
        if [ -f "$file" ]; then
            readlink -f "$file"
            return 0
        fi
    done
    echo "libsofthsm2.so was not found" >&2
    return 1
}

# subject_config <file> <lines of the distinguished name>
# Dotted names stand behind a "0.", because openssl drops everything up to the first dot.
subject_config() {
    cat > "$1" <<TEXT
[req]
prompt = no
utf8 = yes
string_mask = utf8only
distinguished_name = subject
[subject]
$2
[leaf]
basicConstraints = critical,CA:FALSE
keyUsage = critical,digitalSignature
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
[ca]
basicConstraints = critical,CA:TRUE
keyUsage = critical,keyCertSign,cRLSign
subjectKeyIdentifier = hash
TEXT
}

# issue <name> <key options> <subject>: <name>.key, <name>.crt, <name>.der by the tour's authority
issue() {
    subject_config "$directory/$1.cnf" "$3"
    # shellcheck disable=SC2086
    openssl genpkey $2 -out "$directory/$1.key"
    openssl req -new -key "$directory/$1.key" -config "$directory/$1.cnf" -out "$directory/$1.req"
    openssl x509 -req -in "$directory/$1.req" -CA "$directory/ca.crt" -CAkey "$directory/ca.key" \
        -CAcreateserial -days 365 -sha256 -extfile "$directory/$1.cnf" -extensions leaf \
        -out "$directory/$1.crt"
    openssl x509 -in "$directory/$1.crt" -outform DER -out "$directory/$1.der"
}

make_authority() {
    subject_config "$directory/ca.cnf" "CN = Trivex Tour Authority
O = Trivex Tour"
    openssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out "$directory/ca.key"
    openssl req -new -x509 -key "$directory/ca.key" -config "$directory/ca.cnf" -extensions ca \
        -days 3650 -sha256 -out "$directory/ca.crt"
    openssl x509 -in "$directory/ca.crt" -outform DER -out "$directory/ca.der"
}

make_certificates() {
    issue rsa "-algorithm RSA -pkeyopt rsa_keygen_bits:2048" "CN = Иванова Мария Петровна
O = ООО «Ромашка»
OU = Бухгалтерия
L = Москва
ST = г. Москва
C = RU
street = ул. Ленина, д. 1
emailAddress = ivanova@romashka.example
0.1.2.643.3.131.1.1 = 500100732259
0.1.2.643.100.1 = 1027700132195
0.1.2.643.100.3 = 11223344595
0.1.2.643.100.4 = 7707083893
0.1.2.643.100.5 = 304500116000157
0.1.2.643.100.114 = 0"
    issue ec "-algorithm EC -pkeyopt ec_paramgen_curve:P-384" "CN = Пётр Сидоров 7707083893
O = ИП Сидоров"
    issue user "-algorithm EC -pkeyopt ec_paramgen_curve:P-256" "CN = Anna Example
O = Example Ltd"
    issue bundle "-algorithm RSA -pkeyopt rsa_keygen_bits:2048" "CN = Анна Бандл
O = Trivex Tour"
    openssl pkcs12 -export -inkey "$directory/bundle.key" -in "$directory/bundle.crt" \
        -certfile "$directory/ca.crt" -name "Ключ Анны" -passout "pass:пароль" \
        -out "$directory/bundle.p12"
}

on_token() {
    pkcs11-tool --module "$TRIVEX_TOUR_SOFTHSM" --token-label "$TRIVEX_TOUR_TOKEN" --login \
        --pin "$TRIVEX_TOUR_PIN" "$@"
}

make_token() {
    mkdir -p "$directory/tokens"
    printf 'directories.tokendir = %s/tokens\nobjectstore.backend = file\nlog.level = ERROR\n' \
        "$directory" > "$SOFTHSM2_CONF"
    softhsm2-util --init-token --free --label "$TRIVEX_TOUR_TOKEN" --pin "$TRIVEX_TOUR_PIN" \
        --so-pin "$TRIVEX_TOUR_PIN"
    for pair in 01:rsa 02:ec; do
        name=${pair#*:}
        softhsm2-util --import "$directory/$name.key" --token "$TRIVEX_TOUR_TOKEN" \
            --label "$name" --id "${pair%:*}" --pin "$TRIVEX_TOUR_PIN"
        on_token --write-object "$directory/$name.der" --type cert --id "${pair%:*}" --label "$name"
    done
    on_token --write-object "$directory/ca.der" --type cert --id 03 --label authority
    cp "$TRIVEX_TOUR_SOFTHSM" "$TRIVEX_TOUR_MODULE"
}

# The smallest files of each kind that their readers accept.
make_documents() {
    printf '%%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[]/Count 0>>endobj\ntrailer<</Root 1 0 R>>\n%%%%EOF\n' \
        > "$directory/document.pdf"
    base64 -d > "$directory/picture.png" <<TEXT
iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==
TEXT
    printf 'Договор № 1\nplain text\n' > "$directory/contract.txt"
    printf '<?xml version="1.0"?>\n<svg xmlns="http://www.w3.org/2000/svg" width="1" height="1"/>\n' \
        > "$directory/drawing.svg"
}

make_user_store() {
    mkdir -p "$XDG_DATA_HOME/trivex/certificates"
    cp "$directory/user.crt" "$XDG_DATA_HOME/trivex/certificates/anna.pem"
}

make_fixtures() {
    set -e
    make_authority
    make_certificates
    make_token
    make_documents
    make_user_store
}
