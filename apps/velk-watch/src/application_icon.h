#ifndef APPS_VELK_WATCH_APPLICATION_ICON_H
#define APPS_VELK_WATCH_APPLICATION_ICON_H

#include <QIcon>
#include <QPixmap>

namespace Velk {

/// The application's icon: the installed one of the desktop's theme, else drawn here in the same shape, since reading
/// the scalable file takes a Qt plug-in that need not be there.
QIcon applicationIcon();

/// The icon as it is drawn here, `size` pixels wide and high.
QPixmap drawnIcon(int size);

} // namespace Velk

#endif
