// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "recording_dialogs.h"

#include "recording_control.h"
#include "watch_settings.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace Velk {

RecordingDialogs::RecordingDialogs(RecordingControl* recording, WatchSettings* settings, QWidget* window)
    : QObject(window)
    , m_recording(recording)
    , m_settings(settings)
    , m_window(window)
{}

bool RecordingDialogs::save()
{
    m_recording->stop();
    if (m_recording->state() != RecordingControl::Unsaved)
        return true;
    const QString folder = m_settings->recordingFolder();
    const QString proposal = QStringLiteral("recording-%1.csv")
                                 .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")));
    QFileDialog dialog(m_window, tr("Save recording"), folder.isEmpty() ? QDir::homePath() : folder,
                       tr("Recordings (*.csv);;All files (*)"));
    dialog.setObjectName(QStringLiteral("saveDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.selectFile(proposal);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;

    const QString fileName = dialog.selectedFiles().constFirst();
    // The dialog has asked whether to replace an existing file.
    const RecordSaveResult result = m_recording->save(fileName, RecordFileSaver::ReplaceExisting);
    if (result.isSaved()) {
        m_settings->setRecordingFolder(QFileInfo(fileName).absolutePath());
        emit saved(fileName);
    }
    if (!result.title.isEmpty() || !result.message.isEmpty())
        emit message(result.title, result.message);
    return result.isSaved();
}

bool RecordingDialogs::saveOrDiscard(const QString& question)
{
    if (m_recording->state() == RecordingControl::Idle)
        return true;
    QMessageBox box(QMessageBox::Question, tr("Recording"), question, QMessageBox::NoButton, m_window);
    box.setObjectName(QStringLiteral("recordingQuestion"));
    box.setInformativeText(m_recording->text());
    QPushButton* const saveButton = box.addButton(tr("&Save…"), QMessageBox::AcceptRole);
    QPushButton* const discardButton = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* const cancelButton = box.addButton(QMessageBox::Cancel);
    saveButton->setObjectName(QStringLiteral("saveButton"));
    discardButton->setObjectName(QStringLiteral("discardButton"));
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    box.setDefaultButton(saveButton);
    box.setEscapeButton(cancelButton);
    box.exec();
    if (box.clickedButton() == saveButton)
        return save();
    if (box.clickedButton() != discardButton)
        return false;
    m_recording->stop();
    m_recording->discard();
    return true;
}

} // namespace Velk
