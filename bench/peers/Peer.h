// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <memory>

namespace Corvane::Bench
{

/// One way of holding an XML file in memory.
class Peer
{
public:
    Peer() = default;
    virtual ~Peer() = default;

    /// Reads a file into memory. False if that fails.
    virtual bool Load(const QString& fileName) = 0;
    /// Walks the whole tree and gathers the elements of that tag; returns how many there are.
    virtual int Search(const char* tag) = 0;
    /// Frees what Load() made.
    virtual void Unload() = 0;

private:
    Q_DISABLE_COPY(Peer)
};

/// Each gives null if the peer was not found when this program was built.
std::unique_ptr<Peer> MakeLibraryPeer();
std::unique_ptr<Peer> MakeQDomPeer();
std::unique_ptr<Peer> MakePugixmlPeer();
std::unique_ptr<Peer> MakeLibxml2Peer();

} // namespace Corvane::Bench
