// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/SCLElement.h>

#include <corvane/elements/XmlTreeWriter.h>

namespace Corvane
{

void SCLElement::WriteToXML(QXmlStreamWriter& writer, QFutureInterface<QString>* future,
                            bool withChildren)
{
    Internal::XmlTreeWriter(writer, future).Write(this, withChildren);
}

} // namespace Corvane
