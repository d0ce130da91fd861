// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TESTS_APPS_VELK_WATCH_RECORDING_ANSWERS_H
#define TESTS_APPS_VELK_WATCH_RECORDING_ANSWERS_H

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace Velk {

/// Answers the next dialog of this class, from within its own event loop.
template <typename Dialog>
void answerNext(const std::function<void(Dialog*)>& answer, int* answered)
{
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        ++*answered;
        answer(dialog);
    });
    timer->start(10);
}

inline void clickNext(const char* button, int* answered)
{
    answerNext<QMessageBox>(
        [button](QMessageBox* box) { box->findChild<QPushButton*>(QLatin1String(button))->click(); }, answered);
}

inline void saveNextTo(const QString& fileName, int* answered)
{
    answerNext<QFileDialog>(
        [fileName](QFileDialog* dialog) {
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(fileName);
            QTest::keyClick(dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
        },
        answered);
}

inline QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("no such file");
}

} // namespace Velk

#endif
