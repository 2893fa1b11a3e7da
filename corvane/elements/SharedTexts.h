// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include <cstddef>
#include <vector>

namespace Corvane::Internal
{

/// Makes texts of views so that equal short ones share their memory. A null view gives a null text.
class SharedTexts
{
public:
    QString Text(QStringView view)
    {
        if (view.isNull())
            return {};
        if (view.isEmpty())
            return QString::fromLatin1("");
        if (view.size() > longest)
            return view.toString();
        QString& place = m_places[qHash(view, 0) % count];
        if (QStringView(place) != view)
            place = view.toString();
        return place;
    }

private:
    // Each text has one place, so that no input can make it grow.
    static constexpr std::size_t count = 4096;
    static constexpr int longest = 40;

    std::vector<QString> m_places = std::vector<QString>(count);
};

} // namespace Corvane::Internal
