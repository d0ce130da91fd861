// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/distinct_colors.h>

#include "model_text.h"

#include <QtTest>

#include <array>
#include <cmath>

using namespace Velk;

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

double linear(int component)
{
    const double c = component / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

Triple linearRgb(const QColor& color)
{
    return {linear(color.red()), linear(color.green()), linear(color.blue())};
}

Triple product(const Matrix& matrix, const Triple& v)
{
    Triple result{};
    for (size_t i = 0; i < 3; ++i)
        result[i] = matrix[i][0] * v[0] + matrix[i][1] * v[1] + matrix[i][2] * v[2];
    return result;
}

double luminance(const QColor& color)
{
    const Triple rgb = linearRgb(color);
    return 0.2126 * rgb[0] + 0.7152 * rgb[1] + 0.0722 * rgb[2];
}

// As the Web Content Accessibility Guidelines define it.
double contrast(const QColor& a, const QColor& b)
{
    const double brighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (brighter + 0.05) / (darker + 0.05);
}

// CIE 1976 L*a*b* under the D65 white of sRGB.
Triple lab(Triple rgb)
{
    for (double& component : rgb)
        component = std::min(1.0, std::max(0.0, component));
    const Triple xyz = product(
        {{{0.4124564, 0.3575761, 0.1804375}, {0.2126729, 0.7151522, 0.0721750}, {0.0193339, 0.1191920, 0.9503041}}},
        rgb);
    const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116.0; };
    const double x = f(xyz[0] / 0.95047);
    const double y = f(xyz[1]);
    const double z = f(xyz[2] / 1.08883);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

double difference(const Triple& a, const Triple& b)
{
    return std::sqrt(std::pow(a[0] - b[0], 2) + std::pow(a[1] - b[1], 2) + std::pow(a[2] - b[2], 2));
}

} // namespace

Q_DECLARE_METATYPE(Matrix)

class TestDistinctColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void differForEveryEye_data();
    void differForEveryEye();
    void standOutFromLightAndDarkBackgrounds();
    void beginAgainAfterTheLast();
    void haveNames();
};

void TestDistinctColors::differForEveryEye_data()
{
    // Severity 1.0 of each deficiency, on linear RGB: Machado, Oliveira and Fernandes (2009), table 1.
    QTest::addColumn<Matrix>("vision");

    QTest::newRow("normal vision") << Matrix{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    QTest::newRow("protanopia") << Matrix{
        {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
    QTest::newRow("deuteranopia") << Matrix{
        {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
    QTest::newRow("tritanopia") << Matrix{
        {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};
}

void TestDistinctColors::differForEveryEye()
{
    QFETCH(Matrix, vision);

    for (int a = 0; a < DistinctColors::count(); ++a) {
        for (int b = 0; b < a; ++b) {
            const double seen = difference(lab(product(vision, linearRgb(DistinctColors::at(a)))),
                                           lab(product(vision, linearRgb(DistinctColors::at(b)))));
            QVERIFY2(seen >= 15.0, qPrintable(QStringLiteral("%1 and %2: %3")
                                                  .arg(DistinctColors::nameOf(DistinctColors::at(a)),
                                                       DistinctColors::nameOf(DistinctColors::at(b)))
                                                  .arg(seen)));
        }
    }
}

void TestDistinctColors::standOutFromLightAndDarkBackgrounds()
{
    for (int i = 0; i < DistinctColors::count(); ++i) {
        QVERIFY(contrast(DistinctColors::at(i), Qt::white) >= 1.7);
        QVERIFY(contrast(DistinctColors::at(i), QColor(30, 30, 30)) >= 1.7);
    }
}

void TestDistinctColors::beginAgainAfterTheLast()
{
    QCOMPARE(DistinctColors::at(DistinctColors::count() + 2), DistinctColors::at(2));
    QCOMPARE(DistinctColors::indexOf(DistinctColors::at(2)), 2);
    QCOMPARE(DistinctColors::indexOf(QColor("chartreuse")), -1);
}

void TestDistinctColors::haveNames()
{
    QCOMPARE(DistinctColors::nameOf(DistinctColors::at(0)), text("blue"));
    QCOMPARE(DistinctColors::nameOf(DistinctColors::at(1)), text("vermilion"));
    QCOMPARE(DistinctColors::nameOf(QColor(1, 2, 3)), text("#010203"));
}

QTEST_GUILESS_MAIN(TestDistinctColors)

#include "tst_distinct_colors.moc"
