// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef MEMORYKEYMODEL_RECORDING_H
#define MEMORYKEYMODEL_RECORDING_H

#include "batch_matcher.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <QPointer>
#include <QString>
#include <QTemporaryFile>

#include <string>
#include <vector>

namespace Velk {

/// The recording of a displayed key set: its file, its rows, its failures.
///
/// It emits the signals recording() and error() of its model. A slot of these may call any operation of the model, and
/// may delete the model, this object included: after a signal, no member is used before a QPointer has confirmed that
/// the model exists.
class DisplayedMemoryKeyListModel::Recording
{
public:
    explicit Recording(DisplayedMemoryKeyListModel* model);

    void start();
    /// Writes the rows of a batch. The samples of `matches` must stay valid while slots run.
    void write(const std::vector<BatchMatcher::Match>& matches);
    void stop();
    QTemporaryFile* takeFile();

private:
    bool writeLine(const std::string& line);
    void abandonFile(const QString& message);
    void reportFailedWrite();

    DisplayedMemoryKeyListModel* m_model;
    QPointer<QTemporaryFile> m_file; ///< a child of the model
    double m_timeOrigin = 0.0;       ///< subtracted from every time stamp; 0.0 until the first row
    int m_run = 0; ///< counts the recordings: another number means that a slot has ended one and started the next
};

} // namespace Velk

#endif
