// SPDX-License-Identifier: Apache-2.0
#include <corvane/schema/LocalFileSource.h>

#include <corvane/schema/XercesText.h>

#include <QFile>

#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <memory>

namespace Corvane::Internal
{

namespace
{

class FileStream : public xercesc::BinInputStream
{
public:
    explicit FileStream(const QString& path) : m_file(path) {}

    bool Open() { return m_file.open(QIODevice::ReadOnly); }

    XMLFilePos curPos() const override { return static_cast<XMLFilePos>(m_file.pos()); }

    // A read error ends the input, which leaves the document incomplete and thus refused.
    XMLSize_t readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) override
    {
        const qint64 count =
            m_file.read(reinterpret_cast<char*>(toFill), static_cast<qint64>(maxToRead));
        return static_cast<XMLSize_t>(std::max<qint64>(count, 0));
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    QFile m_file;
};

} // namespace

LocalFileSource::LocalFileSource(const QString& path)
    : xercesc::InputSource(ToXerces(path).data()), m_path(path)
{
}

xercesc::BinInputStream* LocalFileSource::makeStream() const
{
    auto stream = std::make_unique<FileStream>(m_path);
    return stream->Open() ? stream.release() : nullptr;
}

} // namespace Corvane::Internal
