// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/item_model_translator.h>

#include <QString>
#include <QTranslator>

namespace Velk {

std::unique_ptr<QTranslator> createItemModelTranslator(const QLocale& locale)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(locale, QStringLiteral("itemmodels"), QStringLiteral("_"),
                          QStringLiteral(":/itemmodels/i18n")))
        return nullptr;
    return translator;
}

} // namespace Velk
