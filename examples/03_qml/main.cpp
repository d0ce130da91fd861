// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// The catalogue and the watched keys in QML views. With --until-values it prints what the views show once values have
// come, and ends.
#include <connections/links/robot_links.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/watch_model.h>
#include <session/robot_session.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTextStream>
#include <QTimer>

using namespace Velk;

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    RobotSession session(RobotLinks::createLink(QStringLiteral("sim:"), nullptr));
    CatalogueModel catalogue;
    WatchModel watched(session.displayedKeys());
    QObject::connect(&session, &RobotSession::catalogueReady, &catalogue, &CatalogueModel::setCatalogue);
    for (const char* name : {"Battery/Charge", "Base/Velocity/Linear"})
        session.watchByName(QLatin1String(name));

    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("catalogue"), QVariant::fromValue(&catalogue)},
                                 {QStringLiteral("watched"), QVariant::fromValue(&watched)}});
    engine.load(QUrl(QStringLiteral("qrc:/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    QObject* const window = engine.rootObjects().first();
    const auto shown = [window](const char* function) {
        QVariant result;
        QMetaObject::invokeMethod(window, function, Q_RETURN_ARG(QVariant, result));
        return result.toStringList();
    };
    QTimer poll; // views make their items when they are drawn
    if (application.arguments().contains(QStringLiteral("--until-values"))) {
        QObject::connect(&poll, &QTimer::timeout, window, [&] {
            const QStringList texts = shown("firstCatalogueText") + shown("firstWatchedTexts");
            if (texts.contains(QString()))
                return;
            QTextStream(stdout) << texts.join(QLatin1Char('\n')) << Qt::endl;
            QCoreApplication::quit();
        });
        poll.start(50);
    }
    session.link()->open();
    return application.exec();
}
