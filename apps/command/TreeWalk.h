// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <corvane/elements/SCLElement.h>

#include <QList>

#include <vector>

namespace Corvane::Command
{

/// Visits an element and all below it, each before its own children, in the order of
/// SCLElement::GetChildList(). Any depth is walked. The tree may not change meanwhile.
class TreeWalk
{
public:
    explicit TreeWalk(SCLElement* top) { m_levels.push_back({{top}, 0}); }

    /// The next element, or null at the end.
    SCLElement* Next()
    {
        if (m_entered != nullptr)
            m_levels.push_back({m_entered->GetChildList(), 0});
        while (!m_levels.empty() && m_levels.back().next == m_levels.back().elements.size())
            m_levels.pop_back();
        if (m_levels.empty())
            return m_entered = nullptr;
        Level& level = m_levels.back();
        m_depth = static_cast<int>(m_levels.size()) - 1;
        m_entered = level.elements.at(level.next++);
        return m_entered;
    }
    /// Leaves out what is below the element that Next() gave last.
    void SkipChildren() { m_entered = nullptr; }
    /// The depth of the element that Next() gave last, 0 for the top.
    int Depth() const { return m_depth; }

private:
    struct Level {
        QList<SCLElement*> elements;
        decltype(QList<SCLElement*>().size()) next;
    };

    std::vector<Level> m_levels;
    SCLElement* m_entered = nullptr;
    int m_depth = 0;
};

} // namespace Corvane::Command
