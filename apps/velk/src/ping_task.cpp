#include "ping_task.h"

#include "console.h"

#include <connections/link/robot_link.h>
#ifdef VELK_WITH_REDIS
#include <connections/redis/redis_link.h>
#endif
#include <memorykeymodel/memory_key_list_model.h>

namespace Velk {

PingTask::PingTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs)
    : RobotTask(std::move(link), RobotSession::ListKeys, console, timeoutMs)
{}

void PingTask::onListed(const MemoryKeyListModel& catalogue)
{
    m_lines.clear();
    addLine(QStringLiteral("robot"), link().url());
    addLine(QStringLiteral("keys"), QStringLiteral("%1 data, %2 event")
                                        .arg(catalogue.keys(DataNature).size())
                                        .arg(catalogue.keys(EventNature).size()));
#ifdef VELK_WITH_REDIS
    if (auto* const redis = qobject_cast<RedisLink*>(&link())) {
        // It does not come when the connection is lost meanwhile: the next one starts anew, within the time-out.
        redis->requestServerReport([self = QPointer<PingTask>(this)](const RedisServerReport& report) {
            if (!self || self->isFinished())
                return;
            if (!report.robotName.isEmpty())
                self->addLine(QStringLiteral("name"), report.robotName);
            const QString version = report.version.isEmpty() ? QStringLiteral("of unknown version") : report.version;
            QStringList server = {QStringLiteral("Redis ") + version, report.mode, report.role,
                                  QStringLiteral("at ") + report.address};
            server.removeAll(QString());
            self->addLine(QStringLiteral("server"), server.join(QStringLiteral(", ")));
            self->addLine(QStringLiteral("round trip"), QStringLiteral("%1 ms, the longest of 20 %2 ms")
                                                            .arg(report.roundTripMedianMs, 0, 'f', 3)
                                                            .arg(report.roundTripLongestMs, 0, 'f', 3));
            self->addLine(QStringLiteral("clock"),
                          QStringLiteral("%1%2 s against this computer's")
                              .arg(report.clockOffsetSeconds < 0 ? QString() : QStringLiteral("+"))
                              .arg(report.clockOffsetSeconds, 0, 'f', 3));
            self->addLine(QStringLiteral("user"),
                          report.user.isEmpty() ? QStringLiteral("not told by the server") : report.user);
            self->addLine(QStringLiteral("granted"), report.granted.join(QLatin1Char(' ')));
            if (!report.refused.isEmpty())
                self->addLine(QStringLiteral("refused"), report.refused.join(QLatin1Char(' ')));
            self->writeAndFinish();
        });
        return;
    }
#endif
    writeAndFinish();
}

void PingTask::addLine(const QString& subject, const QString& text)
{
    m_lines.append(subject.leftJustified(12) + Console::printable(text));
}

void PingTask::writeAndFinish()
{
    const bool isWritten = console().write(m_lines.join(QLatin1Char('\n')).toUtf8() + '\n');
    finish(isWritten ? Success : console().outputStatus());
}

} // namespace Velk
