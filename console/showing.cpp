// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/showing.h"

#include "console/report.h"
#include "console/secretinput.h"
#include "qca/adapter/keybundlefile.h"
#include "qca/adapter/qcause.h"
#include "qca/base/regularfile.h"
#include "tools/certificatedetails.h"
#include "tools/fileitems.h"
#include "tools/fileitemtexts.h"
#include "tools/files.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <iterator>

namespace Trivex {

namespace {

/// The words for `FileContents::Form` in JSON.
constexpr const char *FormWords[] = {"objects", "collection", "message", "raw-signature",
                                     "bundle",  "damaged",    "document"};
/// Those for `FileObject::Kind`.
constexpr const char *KindWords[] = {
    "certificate",       "request",           "revocation-list",
    "private-key",       "public-key",        "attribute-certificate",
    "revocation-answer", "encrypted-message", "ssh-private-key"};
static_assert(std::size(KindWords) == FileObject::SshKey + 1, "one for each kind");
static_assert(std::size(FormWords) == FileContents::Document + 1, "one for each form");

/// What a file holds, or why that can't be told.
struct Shown {
    FileContents::Form form = FileContents::Document;
    QVector<FileItem> items;
    int broken = 0;
    QString problem;
};

QString whyNotRead(const QString &path)
{
    // Where a letter could not be read, there may be one whose name can't be said.
    if (!QFileInfo::exists(path) && !path.contains(QChar::ReplacementCharacter)) {
        //% "There is no such file."
        return qtTrId("trivex-console-no-file");
    }
    return Files().whyNotRead(path);
}

QString problemOf(const FileContents &contents)
{
    switch (contents.form) {
    case FileContents::Damaged:
        return qtTrId("trivex-app-read-damaged");
    case FileContents::Document:
        //% "holds no certificate, request, list, key or bundle"
        return qtTrId("trivex-console-document");
    case FileContents::RawSignature:
        //% "is a signature and nothing else"
        return qtTrId("trivex-console-raw-signature");
    default:
        return {};
    }
}

void openBundle(const QString &path, const QString &passwordFile, Shown *shown)
{
    //% "Password of %1:"
    const QString question = qtTrId("trivex-console-password").arg(Files().fileName(path));
    const auto password =
        passwordFile.isEmpty() ? typedSecret(question) : secretFromFile(passwordFile);
    if (!password) {
        shown->problem = passwordFile.isEmpty()
            //% "is a bundle: its password is asked for at a terminal, or see --password-file"
            ? qtTrId("trivex-console-no-terminal")
            : whyNotRead(passwordFile);
        return;
    }
    const auto loaded = readKeyBundle(path, *password);
    if (loaded && !loaded->bundle.isNull())
        shown->items = fileItems(loaded->bundle);
    else if (loaded && loaded->result == QCA::ErrorPassphrase)
        //% "The password is wrong."
        shown->problem = qtTrId("trivex-console-wrong-password");
    else
        shown->problem = qtTrId("trivex-app-bundle-decode");
}

Shown read(const QString &path, const QString &passwordFile)
{
    Shown shown;
    FileProblem problem = FileProblem::None;
    auto bytes = readRegularFile(path, &problem);
    if (!bytes) {
        shown.problem =
            problem == FileProblem::TooLarge ? problemOf(FileContents()) : whyNotRead(path);
        return shown;
    }
    const FileContents contents = readFileContents(*bytes);
    if (contents.has(FileObject::PrivateKey))
        bytes->fill(0);
    shown.form = contents.form;
    shown.broken = contents.broken;
    shown.items = fileItems(contents);
    shown.problem = problemOf(contents);
    if (contents.form == FileContents::Bundle)
        openBundle(path, passwordFile, &shown);
    if (shown.items.isEmpty() && shown.broken == 0 && shown.problem.isEmpty()) {
        // A collection may be empty, and a signed message come without.
        //% "holds no certificates"
        shown.problem = qtTrId("trivex-console-empty");
    }
    return shown;
}

QJsonArray jsonOf(const QVariantList &groups)
{
    QJsonArray result;
    for (const QVariant &group : groups) {
        const QVariantMap map = group.toMap();
        QJsonArray rows;
        const QVariantList values = map.value(QStringLiteral("rows")).toList();
        for (const QVariant &row : values) {
            const QVariantMap one = row.toMap();
            rows += QJsonObject{
                {QStringLiteral("label"), one.value(QStringLiteral("label")).toString()},
                {QStringLiteral("value"), one.value(QStringLiteral("value")).toString()}};
        }
        result +=
            QJsonObject{{QStringLiteral("title"), map.value(QStringLiteral("title")).toString()},
                        {QStringLiteral("rows"), rows}};
    }
    return result;
}

QJsonObject jsonOf(const QString &path, const Shown &shown)
{
    QJsonArray items;
    for (const FileItem &item : shown.items) {
        items += QJsonObject{{QStringLiteral("kind"), QLatin1String(KindWords[item.kind])},
                             {QStringLiteral("name"), itemName(item)},
                             {QStringLiteral("detail"), itemDetail(item)},
                             {QStringLiteral("hasKey"), !item.key.isNull()},
                             {QStringLiteral("groups"), jsonOf(itemGroups(item))}};
    }
    QJsonObject result{{QStringLiteral("file"), path},
                       {QStringLiteral("form"), QLatin1String(FormWords[shown.form])},
                       {QStringLiteral("damaged"), shown.broken},
                       {QStringLiteral("items"), items}};
    if (!shown.problem.isEmpty())
        result.insert(QStringLiteral("problem"), shown.problem);
    return result;
}

void sayItems(const QVector<FileItem> &items)
{
    for (const FileItem &item : items) {
        say(itemName(item));
        const QString text = CertificateDetails::textOf(itemGroups(item));
        say(text);
    }
}

} // namespace

ExitCode show(const QStringList &files, const QString &passwordFile, bool isJson)
{
    useQca();
    QJsonArray json;
    ExitCode code = Done;
    for (const QString &path : files) {
        const Shown shown = read(path, passwordFile);
        if (isJson)
            json += jsonOf(path, shown);
        else
            sayItems(shown.items);
        if (shown.broken > 0) {
            //% "%1: %n part(s) are damaged and left out"
            complain(qtTrId("trivex-console-broken", shown.broken).arg(path));
            code = Failed;
        }
        if (!shown.problem.isEmpty()) {
            complain(QStringLiteral("%1: %2").arg(path, shown.problem));
            code = Failed;
        }
    }
    if (isJson)
        sayJson(json);
    return code;
}

} // namespace Trivex
