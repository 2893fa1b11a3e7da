// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/ChangeReport.h>
#include <corvane/elements/ChangeStamp.h>
#include <corvane/elements/ImageInput.h>
#include <corvane/elements/ImageOutput.h>
#include <corvane/elements/PreorderWalk.h>
#include <corvane/elements/SCLAttribute.h>
#include <corvane/elements/SCLNamePool.h>
#include <corvane/elements/SharedTexts.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QFutureInterface>
#include <QIODevice>

#include <vector>

namespace Corvane
{

using Internal::ChangeReport;
using Internal::ChangeStamp;
using Internal::ImageInput;
using Internal::ImageOutput;
using Internal::PreorderWalk;
using Internal::SCLNamePool;
using Internal::SharedTexts;

/// Writes records in preorder, which is their order in the image.
class SCLElement::BinaryWriter
{
public:
    explicit BinaryWriter(QDataStream& stream) : m_output(stream) {}

    void Write(const SCLElement* top)
    {
        WriteHead(top);
        PreorderWalk walk(top);
        while (const SCLElement* element = walk.Next())
            WriteHead(element);
    }

private:
    // All of a record but the children.
    void WriteHead(const SCLElement* element)
    {
        const SCLNamePool* pool = SCLNamePool::Instance();
        m_output.PutText(pool->GetTagFromId(element->m_uTagId));
        m_output.PutText(element->m_strValue);
        m_output.PutCount(element->m_listAttribute.size());
        for (const SCLAttribute* attribute : element->m_listAttribute) {
            m_output.PutText(pool->GetAttFromId(attribute->m_uNameId));
            m_output.PutText(attribute->m_strValue);
        }
        qint64 children = 0;
        for (const QList<SCLElement*>& group : element->m_mapChild)
            children += group.size();
        m_output.PutCount(children);
    }

    ImageOutput m_output;
};

/// Reads records with a stack of its own, so that any depth is read. A child is attached when all
/// below it is read: until then, nobody can come upon it.
class SCLElement::BinaryReader
{
public:
    explicit BinaryReader(QDataStream& stream) : m_input(stream) {}

    void Read(SCLElement* top)
    {
        NoteAttributes(top);
        ReadHead(top);
        while (!m_open.empty()) {
            Open& open = m_open.back();
            if (open.children > 0 && MayGoOn(open.promised, leastElement)) {
                --open.children;
                ReadHead(NewChild(open.element));
            } else {
                Close();
            }
        }
    }

private:
    struct Open {
        SCLElement* element;
        qint32 promised;
        qint32 children;
    };
    /// Where the element that is being read has the attribute of a name.
    struct Place {
        quint64 element;
        qsizetype position;
    };
    /// The bytes that a record takes at least.
    static constexpr int leastAttribute = 8;
    static constexpr int leastElement = 16;

    // All of a record but the children.
    void ReadHead(SCLElement* element)
    {
        ReadTag(element);
        element->m_strValue = m_texts.Text(m_input.TakeText());
        ChangeStamp::Move();
        ReadAttributes(element);
        const qint32 children = m_input.TakeCount();
        m_open.push_back({element, children, children});
        ++m_uElement;
    }

    void ReadTag(SCLElement* element)
    {
        const unsigned short tagId = SCLNamePool::Instance()->InternTag(m_input.TakeText());
        if (element->m_uTagId != tagId)
            element->m_pElementType = nullptr;
        element->Retag(tagId);
    }

    void ReadAttributes(SCLElement* element)
    {
        constexpr qint32 usual = 8;
        const qint32 promised = m_input.TakeCount();
        if (element->m_listAttribute.isEmpty() && promised > 0)
            element->m_listAttribute.reserve(qMin(promised, usual));
        for (qint32 i = 0; i < promised && MayGoOn(promised, leastAttribute); ++i)
            ReadAttribute(element);
    }

    void ReadAttribute(SCLElement* element)
    {
        const QStringView name = m_input.TakeText();
        const bool isNamed = !name.isEmpty();
        const unsigned short nameId = SCLNamePool::Instance()->InternAtt(name);
        const QString value = m_texts.Text(m_input.TakeText());
        if (nameId == SCLNamePool::m_uInvalidId)
            return;
        SCLAttribute* attribute = isNamed ? Find(element, nameId) : nullptr;
        if (!attribute) {
            if (isNamed)
                NoteAttribute(nameId, element->m_listAttribute.size());
            element->m_listAttribute.append(new SCLAttribute(nameId, value));
        } else if (attribute->m_strValue != value) {
            attribute->m_strValue = value;
        } else {
            return;
        }
        ChangeStamp::Move();
        ChangeReport(element->m_pDocument, false).MarkModified();
    }

    // The attribute is found without a search, so that an element of many costs no more than many
    // elements. A slot on the modified mark may have changed the list: hence the second look.
    SCLAttribute* Find(const SCLElement* element, unsigned short nameId) const
    {
        if (nameId >= m_places.size() || m_places[nameId].element != m_uElement)
            return nullptr;
        SCLAttribute* attribute = element->m_listAttribute.value(
            static_cast<decltype(element->m_listAttribute.size())>(m_places[nameId].position));
        const bool isRight = attribute && attribute->m_uNameId == nameId;
        return isRight ? attribute : element->AttributeOfId(nameId);
    }

    void NoteAttribute(unsigned short nameId, qsizetype position)
    {
        if (nameId >= m_places.size())
            m_places.resize(nameId + 1U);
        m_places[nameId] = {m_uElement, position};
    }

    // Those that the element has already; of several of one name, the first counts.
    void NoteAttributes(const SCLElement* element)
    {
        for (qsizetype i = element->m_listAttribute.size(); i-- > 0;)
            NoteAttribute(element->m_listAttribute.at(static_cast<int>(i))->m_uNameId, i);
    }

    SCLElement* NewChild(const SCLElement* parent)
    {
        // Children begin under the empty tag, which is pooled by that.
        if (!m_bEmptyTagPooled)
            SCLNamePool::Instance()->AddTagToNamePool(QString());
        m_bEmptyTagPooled = true;
        return new SCLElement(SCLNamePool::m_uInvalidId, parent->m_pDocument, nullptr);
    }

    void Close()
    {
        SCLElement* element = m_open.back().element;
        m_open.pop_back();
        if (!m_open.empty())
            Attach(m_open.back().element, element);
    }

    static void Attach(SCLElement* parent, SCLElement* child)
    {
        QList<SCLElement*>& group = parent->GroupFor(child->m_uTagId);
        if (group.isEmpty())
            group.reserve(1); // most stay at one; an append would make room for more
        group.append(child);
        child->m_pParent = parent;
        ChangeStamp::Move();
        ChangeReport(parent->m_pDocument, false).MarkModified();
    }

    // Behind the end of the bytes only records follow that are not there. Those that a plausible
    // count promises are made, empty, and all of them together are no more than the bytes could
    // have held.
    bool MayGoOn(qint64 promised, int leastBytes)
    {
        if (!m_input.IsAtEnd())
            return true;
        const qint64 most = m_input.TakenBytes() / leastBytes;
        return promised <= most && m_nMissing++ < most;
    }

    ImageInput m_input;
    SharedTexts m_texts;
    std::vector<Open> m_open;
    std::vector<Place> m_places;
    quint64 m_uElement = 1;
    qint64 m_nMissing = 0;
    bool m_bEmptyTagPooled = false;
};

namespace
{

void Step(QFutureInterface<QString>* future, int value)
{
    future->setProgressValue(value);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

int PositionOf(const QDataStream& stream)
{
    return stream.device() ? static_cast<int>(stream.device()->pos()) : 0;
}

} // namespace

void SCLElement::Serialize(QDataStream& stream, bool writing, QFutureInterface<QString>* future)
{
    if (future)
        Step(future, writing ? future->progressValue() + 1 : PositionOf(stream));
    if (writing)
        BinaryWriter(stream).Write(this);
    else
        BinaryReader(stream).Read(this);
}

QByteArray SCLElement::WriteToBinary()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    Serialize(stream, true, nullptr);
    return bytes;
}

void SCLElement::ReadFromBinary(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    Serialize(stream, false, nullptr);
}

} // namespace Corvane
