// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// A file that somebody opens, whatever is in it.
#include "fuzz/target.h"
#include "qca/adapter/filecontents.h"
#include "qca/asn1/pem.h"
#include "qca/describe/description.h"

using namespace Trivex;

void TrivexFuzz::take(const QByteArray &input)
{
    const FileContents contents = readFileContents(input);
    check(contents.broken >= 0 && contents.unreadKeys >= 0, "nothing is counted below zero");
    for (const FileObject &object : contents.objects) {
        check(object.certificate < contents.objects.size(), "a key's certificate is in the file");
        if (object.kind == FileObject::Certificate)
            describe(ShownKind::Certificate, object.der);
        else if (object.kind == FileObject::Request)
            describe(ShownKind::Request, object.der);
        else if (object.kind == FileObject::RevocationList)
            describe(ShownKind::RevocationList, object.der);
        else if (object.kind == FileObject::PublicKey)
            describe(ShownKind::PublicKey, object.der);
        else if (object.kind == FileObject::PrivateKey)
            check(object.isEncrypted || object.key, "a private key is there or encrypted");
    }
    // Twice the same.
    check(readFileContents(input).objects.size() == contents.objects.size(),
          "a file holds the same when it is read again");
    int broken = 0;
    for (const PemBlock &block : readPem(input, &broken))
        check(block.begin < block.end && block.end <= input.size(), "a block lies in its text");
}
