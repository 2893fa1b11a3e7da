// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIODevice>

#include <cstddef>
#include <vector>

namespace Corvane::Internal
{

/// Gathers the many small pieces of an XML writer into large ones for a device. A `QFile` does that
/// too, at several times the cost a piece.
class FlatBuffer : public QIODevice
{
    Q_OBJECT

public:
    /// \param target open for writing; not owned, and must outlive this object.
    explicit FlatBuffer(QIODevice* target);
    /// Passes on what is left.
    ~FlatBuffer() override;

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    void PassOn();

    QIODevice* m_pTarget;
    std::vector<char> m_pieces;
    std::size_t m_uUsed = 0;
};

} // namespace Corvane::Internal
