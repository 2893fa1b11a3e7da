// SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#include <corvane/documents/SCLDocControl.h>
#include <corvane/documents/SCLDocument.h>

namespace Corvane::Bench
{

namespace
{

class LibraryPeer : public Peer
{
public:
    bool Load(const QString& fileName) override
    {
        m_pDocument = m_control.OpenDocument(fileName, false);
        return m_pDocument != nullptr;
    }
    int Search(const char* tag) override
    {
        return static_cast<int>(
            m_pDocument->Root()->FindChildByType(QString::fromLatin1(tag), true).size());
    }
    void Unload() override { m_control.CloseDocument(m_pDocument, false); }

private:
    SCLDocControl m_control;
    SCLDocument* m_pDocument = nullptr;
};

} // namespace

std::unique_ptr<Peer> MakeLibraryPeer()
{
    return std::make_unique<LibraryPeer>();
}

} // namespace Corvane::Bench
