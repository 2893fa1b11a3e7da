// SPDX-License-Identifier: Apache-2.0
#include <corvane/crc/Crc32.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace Corvane::Internal
{

namespace
{

using Table = std::array<std::uint32_t, 256>;

constexpr Table ByteTable()
{
    Table table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t c = byte;
        for (int bit = 0; bit < 8; ++bit)
            c = (c & 1) != 0 ? (c >> 1) ^ 0xEDB88320U : c >> 1;
        table[byte] = c;
    }
    return table;
}

// Table n says what a byte does to the register n bytes later, so that eight bytes go at once.
constexpr std::array<Table, 8> SlicingTables()
{
    std::array<Table, 8> tables{};
    tables[0] = ByteTable();
    for (std::size_t slice = 1; slice < tables.size(); ++slice) {
        for (std::size_t byte = 0; byte < tables[slice].size(); ++byte) {
            const std::uint32_t c = tables[slice - 1][byte];
            tables[slice][byte] = (c >> 8) ^ tables[0][c & 0xFF];
        }
    }
    return tables;
}

constexpr std::array<Table, 8> g_tables = SlicingTables();
static_assert(g_tables[0][1] == 0x77073096 && g_tables[0][255] == 0x2D02EF8D);

std::uint32_t ByteAt(const char* data, int index)
{
    return static_cast<unsigned char>(data[index]);
}

// Low byte first, on any machine.
std::uint32_t WordAt(const char* data, int index)
{
    return ByteAt(data, index) | ByteAt(data, index + 1) << 8 | ByteAt(data, index + 2) << 16 |
           ByteAt(data, index + 3) << 24;
}

} // namespace

unsigned int UpdateCrc32(unsigned int previous, const char* data, int size)
{
    if (size < 1)
        return previous;
    std::uint32_t c = ~previous;
    int at = 0;
    for (; size - at >= 8; at += 8) {
        const std::uint32_t low = WordAt(data, at) ^ c;
        const std::uint32_t high = WordAt(data, at + 4);
        c = g_tables[7][low & 0xFF] ^ g_tables[6][(low >> 8) & 0xFF] ^
            g_tables[5][(low >> 16) & 0xFF] ^ g_tables[4][low >> 24] ^ g_tables[3][high & 0xFF] ^
            g_tables[2][(high >> 8) & 0xFF] ^ g_tables[1][(high >> 16) & 0xFF] ^
            g_tables[0][high >> 24];
    }
    for (; at < size; ++at)
        c = (c >> 8) ^ g_tables[0][(ByteAt(data, at) ^ c) & 0xFF];
    return ~c;
}

} // namespace Corvane::Internal
