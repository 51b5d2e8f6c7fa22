// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/toolsplugin.h"

#include "qca/base/catalogues.h"
#include "tools/certificatechain.h"
#include "tools/certificatedetails.h"
#include "tools/certificatefile.h"
#include "tools/certificateimport.h"
#include "tools/checkdigits.h"
#include "tools/documentsigner.h"
#include "tools/documentverifier.h"
#include "tools/entrymodel.h"
#include "tools/exporter.h"
#include "tools/files.h"
#include "tools/filesaver.h"
#include "tools/keychoicemodel.h"
#include "tools/keyexporter.h"
#include "tools/keykindmodel.h"
#include "tools/keyleave.h"
#include "tools/keyrequest.h"
#include "tools/modelcount.h"
#include "tools/pinprompt.h"
#include "tools/rememberedtokens.h"
#include "tools/removalundo.h"
#include "tools/requestprofiles.h"
#include "tools/requestsubject.h"
#include "tools/requestwatcher.h"
#include "tools/revocationlists.h"
#include "tools/rowfiles.h"
#include "tools/rowlines.h"
#include "tools/rows.h"
#include "tools/rowselection.h"
#include "tools/secretguard.h"
#include "tools/sectionedmodel.h"
#include "tools/signingkeys.h"
#include "tools/texts.h"
#include "tools/tokenadmin.h"
#include "tools/tokenerrors.h"
#include "tools/tokenfactlist.h"
#include "tools/tokeninfo.h"
#include "tools/tokenkeyinfo.h"
#include "tools/tokenkeymodel.h"
#include "tools/tokenkeywork.h"
#include "tools/tokenlistmodel.h"
#include "tools/tokenmaker.h"
#include "tools/validity.h"

#include <QQmlEngine>

namespace {

template <typename T> void registerHelper(const char *uri, const char *name)
{
    qmlRegisterSingletonType<T>(uri, 1, 0, name,
                                [](QQmlEngine *, QJSEngine *) -> QObject * { return new T; });
}

} // namespace

TrivexToolsPlugin::TrivexToolsPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
{
}

void TrivexToolsPlugin::registerTypes(const char *uri)
{
    using namespace Trivex;
    // Before anybody starts the key stores.
    RememberedTokens::apply();
    qmlRegisterType<EntryModel>(uri, 1, 0, "EntryModel");
    qmlRegisterType<SecretGuard>(uri, 1, 0, "SecretGuard");
    qmlRegisterType<SectionedModel>(uri, 1, 0, "SectionedModel");
    qmlRegisterType<Exporter>(uri, 1, 0, "Exporter");
    qmlRegisterType<FileSaver>(uri, 1, 0, "FileSaver");
    qmlRegisterType<KeyExporter>(uri, 1, 0, "KeyExporter");
    qmlRegisterType<RowFiles>(uri, 1, 0, "RowFiles");
    qmlRegisterType<RevocationLists>(uri, 1, 0, "RevocationLists");
    qmlRegisterType<RowLines>(uri, 1, 0, "RowLines");
    qmlRegisterType<RowSelection>(uri, 1, 0, "RowSelection");
    qmlRegisterType<RememberedTokens>(uri, 1, 0, "RememberedTokens");
    qmlRegisterType<RemovalUndo>(uri, 1, 0, "RemovalUndo");
    qmlRegisterType<ModelCount>(uri, 1, 0, "ModelCount");
    qmlRegisterType<TokenInfo>(uri, 1, 0, "TokenInfo");
    qmlRegisterType<TokenFactList>(uri, 1, 0, "TokenFactList");
    qmlRegisterType<TokenKeyInfo>(uri, 1, 0, "TokenKeyInfo");
    qmlRegisterType<TokenKeyModel>(uri, 1, 0, "TokenKeyModel");
    qmlRegisterType<TokenKeyWork>(uri, 1, 0, "TokenKeyWork");
    qmlRegisterType<TokenListModel>(uri, 1, 0, "TokenListModel");
    qmlRegisterType<TokenAdmin>(uri, 1, 0, "TokenAdmin");
    qmlRegisterType<TokenMaker>(uri, 1, 0, "TokenMaker");
    qmlRegisterType<TokenErrors>(uri, 1, 0, "TokenErrors");
    qmlRegisterType<PinPrompt>(uri, 1, 0, "PinPrompt");
    qmlRegisterType<CertificateFile>(uri, 1, 0, "CertificateFile");
    qmlRegisterType<CertificateImport>(uri, 1, 0, "CertificateImport");
    qmlRegisterUncreatableType<FileItemModel>(uri, 1, 0, "FileItemModel",
                                              QStringLiteral("A CertificateFile has one"));
    qmlRegisterType<CertificateChain>(uri, 1, 0, "CertificateChain");
    qmlRegisterUncreatableType<ChainStepModel>(uri, 1, 0, "ChainStepModel",
                                               QStringLiteral("A CertificateChain has one"));
    qmlRegisterType<CertificateDetails>(uri, 1, 0, "CertificateDetails");
    qmlRegisterType<DocumentSigner>(uri, 1, 0, "DocumentSigner");
    qmlRegisterType<DocumentVerifier>(uri, 1, 0, "DocumentVerifier");
    qmlRegisterUncreatableType<SignerList>(uri, 1, 0, "SignerList",
                                           QStringLiteral("A DocumentVerifier has one"));
    qmlRegisterType<KeyRequest>(uri, 1, 0, "KeyRequest");
    qmlRegisterUncreatableType<RequestValues>(uri, 1, 0, "RequestValues",
                                              QStringLiteral("A KeyRequest has two"));
    qmlRegisterType<KeyChoiceModel>(uri, 1, 0, "KeyChoiceModel");
    qmlRegisterType<KeyKindModel>(uri, 1, 0, "KeyKindModel");
    qmlRegisterType<SigningKeys>(uri, 1, 0, "SigningKeys");
    qmlRegisterType<RequestWatcher>(uri, 1, 0, "RequestWatcher");
    registerHelper<Validity>(uri, "Validity");
    registerHelper<CheckDigits>(uri, "CheckDigits");
    registerHelper<Files>(uri, "Files");
    registerHelper<KeyLeave>(uri, "KeyLeave");
    registerHelper<RequestProfiles>(uri, "RequestProfiles");
    registerHelper<RequestSubject>(uri, "RequestSubject");
    registerHelper<Texts>(uri, "Texts");
    registerHelper<Rows>(uri, "Rows");
}

void TrivexToolsPlugin::initializeEngine(QQmlEngine *engine, const char *)
{
    Trivex::installCatalogues(QStringLiteral("trivex-app"), engine);
}
