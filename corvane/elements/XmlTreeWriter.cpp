// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/XmlTreeWriter.h>

#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLElement.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/XmlText.h>

#include <QCoreApplication>

namespace Corvane::Internal
{

XmlTreeWriter::XmlTreeWriter(QXmlStreamWriter& writer, QFutureInterface<QString>* future)
    : m_writer(writer), m_pFuture(future), m_nProgress(future ? future->progressValue() : 0)
{
}

void XmlTreeWriter::Write(SCLElement* top, bool withChildren)
{
    Step();
    WriteStart(top);
    if (withChildren)
        WriteContent(top, top->GetSCLElementType());
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        if (level.next == level.children.size()) {
            m_levels.pop_back();
            m_writer.writeEndElement();
            continue;
        }
        SCLElement* child = level.children.at(level.next++);
        SCLElementType* type = child->TypeUnder(level.type);
        Step();
        WriteStart(child);
        WriteContent(child, type);
    }
    if (!withChildren)
        m_writer.writeEndElement();
}

void XmlTreeWriter::Step()
{
    if (!m_pFuture)
        return;
    m_pFuture->setProgressValue(++m_nProgress);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void XmlTreeWriter::WriteStart(const SCLElement* element)
{
    ++m_uElement;
    m_writer.writeStartElement(TagName(element->m_uTagId));
    for (const SCLAttribute* attribute : element->m_listAttribute) {
        WrittenName* name = AttributeName(attribute->m_uNameId);
        if (!name || name->element == m_uElement)
            continue;
        name->element = m_uElement;
        if (IsPlainXmlText(attribute->m_strValue))
            m_writer.writeAttribute(name->text, attribute->m_strValue);
        else
            m_writer.writeAttribute(name->text, XmlText(attribute->m_strValue));
    }
}

void XmlTreeWriter::WriteContent(const SCLElement* element, SCLElementType* type)
{
    QList<SCLElement*> children = element->SortedChildren(type);
    if (children.isEmpty()) {
        if (!element->m_strValue.isEmpty())
            m_writer.writeCharacters(XmlText(element->m_strValue));
        m_writer.writeEndElement();
        return;
    }
    m_levels.push_back({type, std::move(children), 0});
}

const QString& XmlTreeWriter::TagName(unsigned short id)
{
    if (id >= m_tagNames.size())
        m_tagNames.resize(id + 1U);
    QString& name = m_tagNames[id];
    if (name.isNull())
        name = XmlName(SCLNamePool::Instance()->GetTagFromId(id));
    return name;
}

XmlTreeWriter::WrittenName* XmlTreeWriter::AttributeName(unsigned short id)
{
    if (id >= m_attributeNames.size())
        m_attributeNames.resize(id + 1U);
    WrittenName*& name = m_attributeNames[id];
    if (name)
        return name;
    const QString pooled = SCLNamePool::Instance()->GetAttFromId(id);
    if (pooled.isEmpty())
        return nullptr;
    const QString text = XmlName(pooled);
    name = m_writtenNames.value(text);
    if (!name) {
        m_ownedNames.emplace_back(new WrittenName{text, 0});
        name = m_ownedNames.back().get();
        m_writtenNames.insert(text, name);
    }
    return name;
}

} // namespace Corvane::Internal
