// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import Trivex.Crypto 1.0

// Loading a file to show it, and to sign it.
Item {
    LoaderFile {
        id: loader
    }

    Text {
        id: label
        // A binding follows the load.
        text: loader.status === LoaderFile.Ready ? loader.fileName + " " + loader.fileSize : ""
    }

    SignalSpy {
        id: hashTypeChanges
        target: loader
        signalName: "hashTypeChanged"
    }

    TestCase {
        name: "LoaderFile"

        function test_1_start() {
            compare(loader.status, LoaderFile.Null);
            compare(loader.error, LoaderFile.NoError);
            compare(loader.hashType, "sha256");
            compare(loader.availableMimeTypes,
                    ["application/pdf", "image/png", "image/jpeg", "text/plain"]);
        }

        function test_2_text() {
            loader.filePath = backstage.writeFile("letter.txt", "Dear reader");
            compare(loader.status, LoaderFile.Ready);
            compare(loader.fileName, "letter.txt");
            compare(loader.mimeType, "text/plain");
            compare(loader.fileSize, 11);
            compare(loader.fileHash, backstage.sha256("Dear reader"));
            compare(loader.isImage, false);
            compare(loader.isPdf, false);
            compare(label.text, "letter.txt 11");
            const bytes = new Uint8Array(loader.rawData);
            compare(bytes.length, 11);
            compare(bytes[0], "D".charCodeAt(0));
        }

        function test_3_otherDigest() {
            hashTypeChanges.clear();
            loader.hashType = "sha1";
            compare(hashTypeChanges.count, 1);
            compare(loader.fileHash.length, 40);
            loader.hashType = "sha256";
            compare(loader.fileHash, backstage.sha256("Dear reader"));
        }

        function test_4_refused() {
            loader.filePath = backstage.writeFile("drawing.svg",
                "<?xml version='1.0'?><svg xmlns='http://www.w3.org/2000/svg'/>");
            compare(loader.status, LoaderFile.Error);
            compare(loader.error, LoaderFile.ErrorMimeType);
            loader.filePath = "/no/such/file.txt";
            compare(loader.error, LoaderFile.ErrorNotOpenFile);
            verify(loader.filePath.endsWith("letter.txt"));
        }

        function test_5_empty() {
            loader.filePath = backstage.writeFile("empty.txt", "");
            compare(loader.status, LoaderFile.Ready);
            compare(loader.error, LoaderFile.NoError);
            compare(label.text, "empty.txt 0");
            compare(loader.fileHash, backstage.sha256(""));
            compare(new Uint8Array(loader.rawData).length, 0);
        }

        function test_6_keptBytes() {
            loader.filePath = backstage.writeFile("first.txt", "first");
            const kept = loader.rawData;
            loader.filePath = backstage.writeFile("second.txt", "second");
            compare(new Uint8Array(kept)[0], "f".charCodeAt(0));
            compare(new Uint8Array(loader.rawData)[0], "s".charCodeAt(0));
        }
    }
}
