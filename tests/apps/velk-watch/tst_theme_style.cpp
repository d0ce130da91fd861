// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/theme_style.h>

#include <apps/velk-watch/src/color_theme.h>

#include <QPainter>
#include <QStyleOption>
#include <QTest>

using namespace Velk;

namespace {

constexpr int size = 20;

// The element as the style draws it in the palette of the theme.
QImage drawn(QStyle::PrimitiveElement element, ColorTheme::Name theme, QStyle::State state)
{
    QImage picture(size, size, QImage::Format_RGB32);
    QStyleOptionButton option;
    option.palette = ColorTheme::palette(theme, QPalette());
    option.rect = picture.rect();
    option.state = QStyle::State_Enabled | state;
    picture.fill(option.palette.color(QPalette::Window));
    QPainter painter(&picture);
    ThemeStyle().drawPrimitive(element, &option, &painter, nullptr);
    return picture;
}

} // namespace

class TestThemeStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyCheckBoxIsVisible_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("minRatio");
        QTest::newRow("dark") << int(ColorTheme::Dark) << 2.5;
        QTest::newRow("high contrast") << int(ColorTheme::HighContrast) << 7.0;
    }

    void anEmptyCheckBoxIsVisible()
    {
        QFETCH(int, theme);
        QFETCH(double, minRatio);

        const QImage picture = drawn(QStyle::PE_IndicatorCheckBox, ColorTheme::Name(theme), QStyle::State_Off);

        const QColor window = ColorTheme::palette(ColorTheme::Name(theme), QPalette()).color(QPalette::Window);
        QVERIFY(contrastRatio(picture.pixelColor(0, size / 2), window) >= minRatio);
        QVERIFY(contrastRatio(picture.pixelColor(size / 2, size - 1), window) >= minRatio);
    }

    void aButtonThatIsSwitchedOnDiffersFromOneThatIsNot_data()
    {
        QTest::addColumn<int>("theme");
        QTest::newRow("light") << int(ColorTheme::Light);
        QTest::newRow("dark") << int(ColorTheme::Dark);
        QTest::newRow("high contrast") << int(ColorTheme::HighContrast);
    }

    void aButtonThatIsSwitchedOnDiffersFromOneThatIsNot()
    {
        QFETCH(int, theme);
        const auto center = [theme](QStyle::State state) {
            return drawn(QStyle::PE_PanelButtonTool, ColorTheme::Name(theme), state).pixelColor(size / 2, size / 2);
        };

        QVERIFY(contrastRatio(center(QStyle::State_On), center(QStyle::State_Off)) >= 1.2);
    }
};

QTEST_MAIN(TestThemeStyle)
#include "tst_theme_style.moc"
