// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_RECORDING_DIALOGS_H
#define APPS_VELK_WATCH_RECORDING_DIALOGS_H

#include <QObject>

namespace Velk {

class RecordingControl;
class WatchSettings;

/// The dialogs about a recording: the file to save it to, and whether to save or to discard it. Both are modal.
class RecordingDialogs : public QObject
{
    Q_OBJECT

public:
    /// None of the arguments is owned; all must outlive this object. The window is the parent of the dialogs.
    RecordingDialogs(RecordingControl* recording, WatchSettings* settings, QWidget* window);

    /// Asks for a file and saves the recording there; a running one is stopped first. Returns false when there is still
    /// an unsaved recording afterwards.
    bool save();
    /// Asks the question, with the buttons save, discard and cancel, unless there is no recording. Returns whether none
    /// is left to save or to discard.
    bool saveOrDiscard(const QString& question);

Q_SIGNALS:
    /// The recording was saved, completely or not.
    void saved(const QString& fileName);
    /// The result of saving, for the message bar.
    void message(const QString& title, const QString& message);

private:
    RecordingControl* m_recording;
    WatchSettings* m_settings;
    QWidget* m_window;
};

} // namespace Velk

#endif
