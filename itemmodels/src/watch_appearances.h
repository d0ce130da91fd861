// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_APPEARANCES_H
#define ITEMMODELS_WATCH_APPEARANCES_H

#include <QColor>
#include <QHash>
#include <QString>

#include <vector>

namespace Velk {

/// The colour and the display flag of each key, by name: of the displayed keys, and of every other key for which one
/// was set. A colour is chosen by the application, or given by turn from the DistinctColors when the key is displayed.
class WatchAppearances
{
public:
    /// Invalid for a key that has no colour.
    QColor color(const QString& name) const { return m_appearances.value(name).color; }
    /// True unless set to false.
    bool isShown(const QString& name) const { return m_appearances.value(name).isShown; }

    /// Chooses the colour of a key. An invalid colour ends the choice: a displayed key keeps its colour until it is
    /// released, any other key loses it at once. Returns whether color() changed.
    bool setColor(const QString& name, const QColor& color, bool isDisplayed);
    /// Returns whether isShown() changed.
    bool setShown(const QString& name, bool isShown, bool isDisplayed);

    /// How many rows have each of the DistinctColors.
    class ColorUses
    {
    public:
        ColorUses();
        void add(const QColor& color);
        /// The least used colour; the first one if there are several.
        QColor leastUsed() const;

    private:
        std::vector<int> m_uses;
    };

    /// The colour of a key that is going to be displayed: its own, or else the least used one, which is its own then.
    /// Adds it to `uses`.
    QColor assignColor(const QString& name, ColorUses& uses);
    /// Forgets a colour that was given by turn. A chosen colour, and a display flag that is false, stay.
    void release(const QString& name);

private:
    struct Appearance
    {
        QColor color;          // invalid until the key gets one
        bool isChosen = false; // by the application
        bool isShown = true;
    };

    QHash<QString, Appearance> m_appearances;
};

} // namespace Velk

#endif
