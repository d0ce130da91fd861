#ifndef APPS_VELK_WATCH_DISPLAY_CHECK_H
#define APPS_VELK_WATCH_DISPLAY_CHECK_H

#include <QProcessEnvironment>

namespace Velk {

/// Whether a window can be shown: a display is named by the environment, or a Qt platform was chosen that needs none.
/// Asked before the application object exists, which would abort the program otherwise.
bool hasDisplay(const QProcessEnvironment& environment);

} // namespace Velk

#endif
