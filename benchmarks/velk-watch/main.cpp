// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The processor time of velk-watch's thread: the refresh of a full plot, the first
// rows of a large catalogue, a key press in the search field, and thousands of keys that update. Runs without a
// display: bench_velk_watch -platform offscreen

#include <apps/velk-watch/src/main_window.h>
#include <apps/velk-watch/src/plot_view.h>
#include <apps/velk-watch/src/watch_settings.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <session/robot_session.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTreeView>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>

using namespace Velk;

namespace {

void print(const char* what, double value, const char* unit)
{
    std::printf("  %-66s %9.2f %s\n", what, value, unit);
    std::fflush(stdout);
}

void waitFor(const std::function<bool()>& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// Processor time of this thread, the window's.
double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

// Time of this thread: other work of the machine does not count.
double processorMillisecondsOf(const std::function<void()>& work)
{
    const double begin = threadSeconds();
    work();
    return (threadSeconds() - begin) * 1000.0;
}

QVector<PlotCurve> curves(int count, int points)
{
    QVector<PlotCurve> result;
    for (int number = 0; number < count; ++number) {
        PlotCurve curve;
        curve.name = QStringLiteral("Curve/%1").arg(number);
        curve.color = QColor::fromHsv(number * 7 % 360, 200, 180);
        curve.kind = PlotCurve::Line;
        for (int point = 0; point < points; ++point)
            curve.points.append({point * 0.01, std::sin(point * 0.013 * (number + 1)) + number * 0.1});
        result.append(curve);
    }
    return result;
}

void benchPlot(int count, int points)
{
    std::printf("Plot of %d curves of %d points, 1000 pixels wide\n", count, points);
    PlotView plot;
    plot.resize(1000, 500);
    plot.show();
    plot.setCurves(curves(count, points), points * 0.01);
    while (plot.timeAxis().span() < points * 0.01)
        plot.zoomOut();
    plot.drawNow();
    constexpr int refreshes = 20;
    const double total = processorMillisecondsOf([&] {
        for (int refresh = 0; refresh < refreshes; ++refresh)
            plot.drawNow();
    });
    print("one refresh, all points in view", total / refreshes, "ms");
    print("points that are drawn then", plot.drawnPoints(), "");
    while (plot.timeAxis().span() > points * 0.01 / 10)
        plot.zoomIn();
    const double zoomed = processorMillisecondsOf([&] {
        for (int refresh = 0; refresh < refreshes; ++refresh)
            plot.drawNow();
    });
    print("one refresh, a tenth of them in view", zoomed / refreshes, "ms");
}

void benchCatalogue(int keys)
{
    std::printf("Window on a robot with %d keys\n", keys);
    QTemporaryDir folder;
    WatchSettings settings(folder.filePath(QStringLiteral("settings.ini")));
    MainWindow window(&settings);
    window.show();
    window.openRobot(QStringLiteral("sim:?keys=%1").arg(keys));
    bool isReady = false;
    QObject::connect(window.session(), &RobotSession::catalogueReady, &window, [&isReady] { isReady = true; });
    auto* const tree = window.findChild<QTreeView*>(QStringLiteral("catalogueTree"));
    // Begins with the turn of the event loop that brings the last list: the catalogue becomes ready in it, and the
    // window shows the keys.
    double begin = 0.0;
    while (!isReady) {
        begin = threadSeconds();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    tree->repaint();
    print("first rows on the screen, from the turn that brings ready()", (threadSeconds() - begin) * 1000.0, "ms");

    auto* const search = window.findChild<QLineEdit*>(QStringLiteral("search"));
    double longest = 0.0;
    double sum = 0.0;
    QString longestText;
    const QString text = QStringLiteral("extra/*77");
    const auto press = [&](int key, const QString& typed) {
        const double stall = processorMillisecondsOf([&] {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, typed);
            QCoreApplication::sendEvent(search, &event);
            tree->repaint();
        });
        longest = std::max(longest, stall);
        sum += stall;
        if (stall == longest)
            longestText = search->text();
        QCoreApplication::processEvents();
    };
    for (const QChar character : text)
        press(0, character);
    for (int index = 0; index < text.size(); ++index)
        press(Qt::Key_Backspace, QString());
    print("a key press in the search field, the mean", sum / (2.0 * double(text.size())), "ms");
    print("a key press in the search field, the longest", longest,
          qPrintable(QStringLiteral("ms (\"%1\")").arg(longestText)));
}

void benchUpdates(int keys)
{
    std::printf("Window with %d watched keys that update 5 times a second\n", keys);
    QTemporaryDir folder;
    WatchSettings settings(folder.filePath(QStringLiteral("settings.ini")));
    settings.setSamplingPeriod(200);
    MainWindow window(&settings);
    window.show();
    window.openRobot(QStringLiteral("sim:?keys=%1").arg(keys));
    waitFor([&] { return window.session()->catalogue() != nullptr; });
    // Thousands of curves cannot be distinguished: five are plotted.
    const QSet<MemoryKey> all = window.session()->catalogue()->keys(DataNature);
    int shown = 0;
    for (const MemoryKey& key : all) {
        if (++shown > 5)
            window.watchModel()->setShown(key.name(), false);
    }
    print("watching them all takes", processorMillisecondsOf([&] { window.session()->watch(all); }), "ms");
    int updates = 0;
    QObject::connect(window.session()->displayedKeys(), &DisplayedMemoryKeyListModel::keysUpdated, &window,
                     [&updates](const QSet<DisplayedMemoryKey>& updated) { updates += updated.isEmpty() ? 0 : 1; });
    waitFor([&] { return updates >= 5; });

    updates = 0;
    QElapsedTimer clock;
    clock.start();
    const double begin = threadSeconds();
    waitFor([&] { return clock.elapsed() > 6000; });
    const double seconds = double(clock.elapsed()) / 1000.0;
    print("updates a second", updates / seconds, "");
    print("the window's share of one core", 100.0 * (threadSeconds() - begin) / seconds, "%");
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    benchPlot(5, 10000);
    benchPlot(50, 10000);
    benchCatalogue(100000);
    benchUpdates(50);
    benchUpdates(5000);
    return 0;
}
