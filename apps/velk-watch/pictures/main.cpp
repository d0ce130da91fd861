// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes the pictures of the documentation from the real window, on the simulated robot and without a display.

#include <apps/velk-watch/src/main_window.h>
#include <apps/velk-watch/src/message_bar.h>
#include <apps/velk-watch/src/plot_view.h>
#include <apps/velk-watch/src/recording_control.h>
#include <apps/velk-watch/src/translations.h>
#include <apps/velk-watch/src/watch_settings.h>

#include <itemmodels/watch_model.h>
#include <session/robot_session.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyleFactory>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

// Runs the event loop until the condition holds; ends the program when it never does.
void waitFor(const char* what, const std::function<bool()>& condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > timeoutMs) {
            std::fprintf(stderr, "velk-watch-pictures: waited in vain for %s\n", what);
            std::exit(1);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // the window's timers end the waiting
    }
}

void waitSeconds(double seconds)
{
    QElapsedTimer clock;
    clock.start();
    waitFor("the time to pass", [&] { return clock.elapsed() > seconds * 1000; });
}

void save(MainWindow& window, const QDir& folder, const QString& name)
{
    window.plot()->drawNow();
    const QString fileName = folder.filePath(name + QStringLiteral(".png"));
    if (!window.grab().save(fileName)) {
        std::fprintf(stderr, "velk-watch-pictures: cannot write %s\n", qPrintable(fileName));
        std::exit(1);
    }
    std::printf("%s\n", qPrintable(fileName));
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    if (application.arguments().size() != 2) {
        std::fprintf(stderr, "Usage: velk-watch-pictures FOLDER\n");
        return 2;
    }
    const QDir folder(application.arguments().at(1));
    // The same font and the same style on every machine.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    installTranslations(&application, QLocale());

    QTemporaryDir temporary;
    WatchSettings settings(temporary.filePath(QStringLiteral("settings.ini")));
    settings.setSamplingPeriod(50);
    settings.setTheme(ColorTheme::Light);
    MainWindow window(&settings);
    window.resize(1120, 720);
    window.show();
    window.setWatchedNames({QStringLiteral("Arm/Shoulder/Position"), QStringLiteral("Arm/Elbow/Position"),
                            QStringLiteral("Arm/Wrist/Position"), QStringLiteral("Base/Wheel/Left/Speed"),
                            QStringLiteral("Obstacle/Detected")});
    window.openRobot(QStringLiteral("sim:?seed=7"));
    waitFor("the watcher", [&] { return window.session()->isWatcherRunning(); });
    waitSeconds(31);
    window.findChild<QLineEdit*>(QStringLiteral("search"))->setText(QStringLiteral("arm"));
    window.findChild<QWidget*>(QStringLiteral("watchTable"))->setFocus();
    waitSeconds(0.5);
    save(window, folder, QStringLiteral("velk-watch"));

    window.setTheme(ColorTheme::Dark);
    QWidget* const plot = window.plot()->findChild<QWidget*>(QStringLiteral("plot"));
    const QPointF point(plot->width() * 0.55, plot->height() * 0.5);
    QMouseEvent move(QEvent::MouseMove, point, plot->mapToGlobal(point), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot, &move);
    waitSeconds(0.5);
    save(window, folder, QStringLiteral("velk-watch-dark"));

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(plot, &leave);
    window.setTheme(ColorTheme::Light);
    window.toggleRecording();
    waitFor("rows", [&] { return window.recording()->rows() > 120; });
    waitSeconds(0.6);
    save(window, folder, QStringLiteral("velk-watch-recording"));

    window.recording()->stop();
    window.recording()->discard();
    window.openRobot(QStringLiteral("simulator:"));
    window.setTheme(ColorTheme::HighContrast);
    waitSeconds(0.5);
    save(window, folder, QStringLiteral("velk-watch-message"));
    return 0;
}
