// SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#ifdef CORVANE_HAS_LIBXML2

#include <QFile>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstring>
#include <vector>

namespace Corvane::Bench
{

namespace
{

class Libxml2Peer : public Peer
{
public:
    ~Libxml2Peer() override { xmlFreeDoc(m_pDocument); }

    bool Load(const QString& fileName) override
    {
        m_pDocument = xmlReadFile(QFile::encodeName(fileName).constData(), nullptr,
                                  XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
        return m_pDocument != nullptr;
    }
    int Search(const char* tag) override
    {
        std::vector<const xmlNode*> found;
        const xmlNode* root = xmlDocGetRootElement(m_pDocument);
        for (const xmlNode* node = root; node; node = Next(node, root)) {
            if (node->type == XML_ELEMENT_NODE &&
                xmlStrEqual(node->name, reinterpret_cast<const xmlChar*>(tag))) {
                found.push_back(node);
            }
        }
        return static_cast<int>(found.size());
    }
    void Unload() override
    {
        xmlFreeDoc(m_pDocument);
        m_pDocument = nullptr;
    }

private:
    /// The node behind \a node in preorder; null behind the last one.
    static const xmlNode* Next(const xmlNode* node, const xmlNode* root)
    {
        if (node->children) {
            return node->children;
        }
        while (node != root && !node->next) {
            node = node->parent;
        }
        return node == root ? nullptr : node->next;
    }

    xmlDoc* m_pDocument = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeLibxml2Peer()
{
    return std::make_unique<Libxml2Peer>();
}

} // namespace Corvane::Bench

#else

std::unique_ptr<Corvane::Bench::Peer> Corvane::Bench::MakeLibxml2Peer()
{
    return nullptr;
}

#endif
