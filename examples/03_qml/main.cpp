// The catalogue and the watched keys in QML views. With --until-values it prints what the views show once values have
// come, and ends.
#include <connections/directory/robot_directory.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QTextStream>
#include <QTimer>

using namespace Velk;

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const std::unique_ptr<RobotLink> robot = RobotDirectory::createLink(QStringLiteral("sim:"), nullptr);
    DisplayedMemoryKeyListModel displayed(robot.get());
    CatalogueModel catalogue;
    WatchModel watched(&displayed);
    // What is displayed before the robot connects is watched then, and learns its nature and description.
    for (const char* name : {"Battery/Charge", "Base/Velocity/Linear"})
        displayed.addKeys({MemoryKey(QLatin1String(name), QString(), UnknownNature)});
    QObject::connect(robot.get(), &ConnectionManager::connectionEstablished, &catalogue, [&] {
        delete catalogue.catalogue(); // a catalogue is of one connection
        catalogue.setCatalogue(new MemoryKeyListModel(robot.get(), displayed.keys()));
        displayed.startWatcher(false); // a connection does not start it by itself
    });

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
    robot->open();
    return application.exec();
}
