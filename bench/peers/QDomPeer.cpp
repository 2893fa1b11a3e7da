// SPDX-License-Identifier: Apache-2.0
#include "Peer.h"

#ifdef CORVANE_HAS_QT_XML

#include <QDomDocument>
#include <QFile>
#include <QVector>

namespace Corvane::Bench
{

namespace
{

class QDomPeer : public Peer
{
public:
    bool Load(const QString& fileName) override
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) && m_document.setContent(&file);
    }
    int Search(const char* tag) override
    {
        const QString wanted = QString::fromLatin1(tag);
        QVector<QDomElement> found;
        QVector<QDomElement> open{m_document.documentElement()};
        while (!open.isEmpty()) {
            const QDomElement element = open.takeLast();
            if (element.tagName() == wanted) {
                found.append(element);
            }
            for (QDomElement child = element.firstChildElement(); !child.isNull();
                 child = child.nextSiblingElement()) {
                open.append(child);
            }
        }
        return static_cast<int>(found.size());
    }
    void Unload() override { m_document = QDomDocument(); }

private:
    QDomDocument m_document;
};

} // namespace

std::unique_ptr<Peer> MakeQDomPeer()
{
    return std::make_unique<QDomPeer>();
}

} // namespace Corvane::Bench

#else

std::unique_ptr<Corvane::Bench::Peer> Corvane::Bench::MakeQDomPeer()
{
    return nullptr;
}

#endif
