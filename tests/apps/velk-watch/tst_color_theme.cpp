// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/color_theme.h>

#include <QTest>

using namespace Velk;

class TestColorTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsLegible_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("minRatio");
        QTest::newRow("light") << int(ColorTheme::Light) << 7.0;
        QTest::newRow("dark") << int(ColorTheme::Dark) << 7.0;
        QTest::newRow("high contrast") << int(ColorTheme::HighContrast) << 15.0;
    }

    void textIsLegible()
    {
        QFETCH(int, theme);
        QFETCH(double, minRatio);
        const QPalette palette = ColorTheme::palette(ColorTheme::Name(theme), QPalette());
        const auto ratio = [&palette](QPalette::ColorRole text, QPalette::ColorRole ground) {
            return contrastRatio(palette.color(text), palette.color(ground));
        };

        QVERIFY(ratio(QPalette::WindowText, QPalette::Window) >= minRatio);
        QVERIFY(ratio(QPalette::Text, QPalette::Base) >= minRatio);
        QVERIFY(ratio(QPalette::Text, QPalette::AlternateBase) >= minRatio);
        QVERIFY(ratio(QPalette::ButtonText, QPalette::Button) >= minRatio);
        QVERIFY(ratio(QPalette::ToolTipText, QPalette::ToolTipBase) >= minRatio);
        QVERIFY(ratio(QPalette::HighlightedText, QPalette::Highlight) >= 4.5);
        QVERIFY(ratio(QPalette::PlaceholderText, QPalette::Base) >= 4.5);
        QVERIFY(ratio(QPalette::Link, QPalette::Base) >= 4.5);
    }

    void theDesktopThemeKeepsItsPalette()
    {
        const QPalette desktop(Qt::magenta);

        QCOMPARE(ColorTheme::palette(ColorTheme::Desktop, desktop), desktop);
    }

    void aStoredNameGivesTheThemeBack()
    {
        QList<ColorTheme::Name> themes;
        for (const ColorTheme::Name name : ColorTheme::names())
            themes.append(ColorTheme::fromString(ColorTheme::toString(name)));

        QCOMPARE(themes, ColorTheme::names());
    }

    void anUnknownNameGivesTheDesktopTheme()
    {
        QCOMPARE(ColorTheme::fromString(QStringLiteral("sepia")), ColorTheme::Desktop);
        QCOMPARE(ColorTheme::fromString(QString()), ColorTheme::Desktop);
    }

    void theContrastRatioIsThatOfTheGuidelines()
    {
        QCOMPARE(contrastRatio(Qt::black, Qt::white), 21.0);
        QCOMPARE(contrastRatio(Qt::white, Qt::black), 21.0);
        QCOMPARE(contrastRatio(Qt::red, Qt::red), 1.0);
    }
};

QTEST_APPLESS_MAIN(TestColorTheme)
#include "tst_color_theme.moc"
