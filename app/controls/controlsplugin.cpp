// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/controls/controlsplugin.h"

#include "app/controls/certificatedetails.h"
#include "app/controls/certificatefile.h"
#include "app/controls/checkdigits.h"
#include "app/controls/desktop.h"
#include "app/controls/entrymodel.h"
#include "app/controls/modelcount.h"
#include "app/controls/pinprompt.h"
#include "app/controls/requestwatcher.h"
#include "app/controls/sectionedmodel.h"
#include "app/controls/tokenerrors.h"
#include "app/controls/tokeninfo.h"
#include "app/controls/tokenlistmodel.h"
#include "app/controls/validity.h"
#include "qca/base/places.h"

#include <QCoreApplication>
#include <QLocale>
#include <QQmlEngine>
#include <QTranslator>

namespace {

template <typename T> void registerHelper(const char *uri, const char *name)
{
    qmlRegisterSingletonType<T>(uri, 1, 0, name,
                                [](QQmlEngine *, QJSEngine *) -> QObject * { return new T; });
}

} // namespace

TrivexControlsPlugin::TrivexControlsPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
{
}

void TrivexControlsPlugin::registerTypes(const char *uri)
{
    using namespace Trivex;
    qmlRegisterType<EntryModel>(uri, 1, 0, "EntryModel");
    qmlRegisterType<SectionedModel>(uri, 1, 0, "SectionedModel");
    qmlRegisterType<ModelCount>(uri, 1, 0, "ModelCount");
    qmlRegisterType<TokenInfo>(uri, 1, 0, "TokenInfo");
    qmlRegisterType<TokenListModel>(uri, 1, 0, "TokenListModel");
    qmlRegisterType<TokenErrors>(uri, 1, 0, "TokenErrors");
    qmlRegisterType<PinPrompt>(uri, 1, 0, "PinPrompt");
    qmlRegisterType<CertificateFile>(uri, 1, 0, "CertificateFile");
    qmlRegisterType<CertificateDetails>(uri, 1, 0, "CertificateDetails");
    qmlRegisterType<RequestWatcher>(uri, 1, 0, "RequestWatcher");
    registerHelper<Validity>(uri, "Validity");
    registerHelper<CheckDigits>(uri, "CheckDigits");
    registerHelper<Desktop>(uri, "Desktop");
}

void TrivexControlsPlugin::initializeEngine(QQmlEngine *engine, const char *)
{
    const QString directory = Trivex::catalogueDirectory(QStringLiteral("trivex-app_en.qm"));
    // English answers whatever the user's own catalogue lacks; the last one installed is asked
    // first.
    auto *english = new QTranslator(engine);
    if (english->load(QStringLiteral("trivex-app_en"), directory))
        QCoreApplication::installTranslator(english);
    auto *local = new QTranslator(engine);
    if (local->load(QLocale(), QStringLiteral("trivex-app"), QStringLiteral("_"), directory))
        QCoreApplication::installTranslator(local);
}
