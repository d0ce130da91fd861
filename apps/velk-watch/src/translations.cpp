// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "translations.h"

#include <itemmodels/item_model_translator.h>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <memory>

// A resource of a static library has to be initialised; the macro works outside of a namespace only.
static void initTranslations()
{
    Q_INIT_RESOURCE(watch_translations);
}

namespace Velk {

void installTranslations(QCoreApplication* application, const QLocale& locale)
{
    initTranslations();
    const auto install = [&](const QLocale& language, const QString& name, const QString& folder) {
        auto* translator = new QTranslator(application);
        if (translator->load(language, name, QStringLiteral("_"), folder))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    };
    // The texts of Qt's own dialogs, where they are installed.
    install(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (std::unique_ptr<QTranslator> itemModels = createItemModelTranslator(locale)) {
        itemModels->setParent(application);
        QCoreApplication::installTranslator(itemModels.release());
    }
    // The English file has the plurals only. The translator that is installed last is asked first.
    install(QLocale(QLocale::English), QStringLiteral("velk-watch"), QStringLiteral(":/i18n"));
    install(locale, QStringLiteral("velk-watch"), QStringLiteral(":/i18n"));
}

} // namespace Velk
