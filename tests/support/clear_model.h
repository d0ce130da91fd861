// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_CLEAR_MODEL_H
#define TESTS_SUPPORT_CLEAR_MODEL_H

#include "fake_robot.h"
#include "key_text.h"

#include <QList>
#include <QMap>
#include <QStringList>

#include <functional>

namespace Velk {

/// The displayed key set and the catalogue, written for clarity only: without sets, sharing and signals. It writes the
/// same log as the product with a fake robot, and the same bytes as the record file.
///
/// It cannot know the order of a set, so the caller supplies the order of the columns.
class ClearModel
{
public:
    explicit ClearModel(const std::function<QStringList()>& columnOrder)
        : m_columnOrder(columnOrder)
    {}

    struct Key
    {
        QString description;
        int nature;
        Samples history;
    };
    using Keys = QMap<QString, Key>;

    void addKeys(const QStringList& names);
    void removeKeys(const QStringList& names);
    void setSelectedKeys(const QStringList& names);
    void startWatcher(bool ownPeriods);
    void stopWatcher();
    void setSamplingPeriod(int period);
    void answerRealTimeSupported(bool supported);
    void connectionChanged(bool isConnected);
    void finishLists(int fetch, const QStringList& data, const QStringList& events, const QStringList& microEvents);
    void deliver(const Batch& batch);
    void startRecording();
    void stopRecording();
    void dropRecordFile();

    QStringList takeLog()
    {
        QStringList lines;
        lines.swap(m_log);
        return lines;
    }
    QStringList displayedText() const { return text(m_displayed); }
    QStringList selectedNames() const { return m_selected.keys(); }
    QByteArray fileBytes() const { return m_file; }
    bool isRecording() const { return m_isRecording; }

    bool hasMemory = true;

private:
    struct Catalogue
    {
        int fetch;
        Keys selected;
    };

    static QStringList text(const Keys& keys);
    void note(const QString& line) { m_log << line; }
    void announce(const char* signal, const Keys& keys) { note((QStringList(signal) + text(keys)).join(' ')); }
    void setMinimum(int period);
    void setRecording(bool isRecording);
    void catalogueReady();
    void record(const Batch& batch);
    void write(const QByteArray& bytes);

    std::function<QStringList()> m_columnOrder;
    QStringList m_log;
    Keys m_displayed;
    Keys m_selected;
    bool m_isConnected = false;
    bool m_isWatching = false;
    bool m_isSubscribed = false; ///< to the batches; stays true when the memory interface is missing at the stop
    int m_period = 1000;
    int m_minimum = 200;
    int m_fetchCount = 0;
    QList<Catalogue> m_catalogues; ///< the catalogues whose lists are not finished
    int m_heldFetch = -1;          ///< the catalogue that the model holds, by its fetch
    bool m_isRecording = false;
    QByteArray m_file;
    int m_filePosition = 0;
    double m_origin = 0.0;
};

} // namespace Velk

#endif
