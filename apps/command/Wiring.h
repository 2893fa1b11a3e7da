// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace Corvane
{
class SCLElement;
}

namespace Corvane::Command
{

/// The ports and cables of a station, as the `PhysConn`s of its first `Communication` tell them.
class Wiring
{
public:
    /// A `PhysConn` that names a port or a cable.
    struct Plug {
        QString ied;
        QString accessPoint;
        /// Whether the file has this access point.
        bool isKnown;
        QStringList ports;
        QStringList cables;
    };

    /// \param root the `SCL` element of a station.
    explicit Wiring(SCLElement* root);

    /// In the order of the file.
    const QList<Plug>& Plugs() const { return m_plugs; }
    /// Positions in Plugs() of those that name an IED.
    QList<int> PlugsOf(const QString& ied) const { return m_plugsOfIed.value(ied); }
    /// The names of all cables, each once, in the order of the file.
    const QStringList& Cables() const { return m_cables; }
    /// Positions in Plugs() of those that a cable leads to, each once.
    QList<int> EndsOf(const QString& cable) const { return m_ends.value(cable); }
    /// What a port is wired to: positions in Plugs() of the other ends of its cable, which is the
    /// first of its plug.
    QList<int> FarEndsOf(int plug) const;

private:
    void Add(SCLElement* connectedAP, bool isKnown);

    QList<Plug> m_plugs;
    QHash<QString, QList<int>> m_plugsOfIed;
    QStringList m_cables;
    QHash<QString, QList<int>> m_ends;
};

/// How a plug is shown: IED, access point and ports, "E01F1 S1 1-A".
QString TextOf(const Wiring::Plug& plug);

} // namespace Corvane::Command
