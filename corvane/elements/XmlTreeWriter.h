// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFutureInterface>
#include <QHash>
#include <QList>
#include <QString>
#include <QXmlStreamWriter>

#include <memory>
#include <vector>

namespace Corvane
{

class SCLElement;

namespace Internal
{

class SCLElementType;

/// One run of SCLElement::WriteToXML(). Keeps its own stack of open elements, so that any depth is
/// written, and carries schema types downwards, so that none is looked up from the root again.
class XmlTreeWriter
{
public:
    XmlTreeWriter(QXmlStreamWriter& writer, QFutureInterface<QString>* future);

    void Write(SCLElement* top, bool withChildren);

private:
    struct Level {
        SCLElementType* type;
        QList<SCLElement*> children;
        int next;
    };
    /// An attribute name as it is written, and the last element that it was written for.
    struct WrittenName {
        QString text;
        quint64 element = 0;
    };

    void Step();
    void WriteStart(const SCLElement* element);
    void WriteContent(const SCLElement* element, SCLElementType* type);
    const QString& TagName(unsigned short id);
    WrittenName* AttributeName(unsigned short id);

    QXmlStreamWriter& m_writer;
    QFutureInterface<QString>* m_pFuture;
    int m_nProgress;
    std::vector<Level> m_levels;
    quint64 m_uElement = 0;
    std::vector<QString> m_tagNames;
    /// By attribute id; equal written names share one entry. Null if not yet looked up.
    std::vector<WrittenName*> m_attributeNames;
    QHash<QString, WrittenName*> m_writtenNames;
    std::vector<std::unique_ptr<WrittenName>> m_ownedNames;
};

} // namespace Internal
} // namespace Corvane
