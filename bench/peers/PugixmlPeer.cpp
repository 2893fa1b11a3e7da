// SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#ifdef CORVANE_HAS_PUGIXML

#include <QFile>

#include <pugixml.hpp>

#include <cstring>
#include <vector>

namespace Corvane::Bench
{

namespace
{

class PugixmlPeer : public Peer
{
public:
    bool Load(const QString& fileName) override
    {
        return static_cast<bool>(m_document.load_file(QFile::encodeName(fileName).constData()));
    }
    int Search(const char* tag) override
    {
        std::vector<pugi::xml_node> found;
        const pugi::xml_node root = m_document.document_element();
        for (pugi::xml_node node = root; node; node = Next(node, root)) {
            if (std::strcmp(node.name(), tag) == 0) {
                found.push_back(node);
            }
        }
        return static_cast<int>(found.size());
    }
    void Unload() override { m_document.reset(); }

private:
    /// The node behind \a node in preorder; null behind the last one.
    static pugi::xml_node Next(pugi::xml_node node, pugi::xml_node root)
    {
        if (node.first_child()) {
            return node.first_child();
        }
        while (node != root && !node.next_sibling()) {
            node = node.parent();
        }
        return node == root ? pugi::xml_node() : node.next_sibling();
    }

    pugi::xml_document m_document;
};

} // namespace

std::unique_ptr<Peer> MakePugixmlPeer()
{
    return std::make_unique<PugixmlPeer>();
}

} // namespace Corvane::Bench

#else

std::unique_ptr<Corvane::Bench::Peer> Corvane::Bench::MakePugixmlPeer()
{
    return nullptr;
}

#endif
