// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonObject>
#include <QString>

namespace Corvane::Command
{

class StandardOutput;

/// An answer in JSON that is mainly one list: an object whose first member is that list, written
/// item by item, one a line, because a station is large.
class JsonList
{
public:
    /// Begins the object. \param name the name of the list.
    JsonList(StandardOutput& output, const QString& name);
    void Add(const QJsonObject& item);
    /// Ends the list and the object. \param rest members that follow the list.
    void Finish(const QJsonObject& rest = QJsonObject());

private:
    StandardOutput& m_output;
    bool m_isEmpty = true;
};

} // namespace Corvane::Command
