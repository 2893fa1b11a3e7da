// SPDX-License-Identifier: Apache-2.0
#include <corvane/help/AddressPool.h>

#include <utility>

namespace Corvane::Internal
{

namespace
{

// The template of both kinds; the fallback of sampled values alone has another group.
constexpr int firstGroup = 0x01;
constexpr int sampledValuesGroup = 0x04;
constexpr int fallbackEnd = 0x10000;

QString Hex(int number, int width)
{
    return QStringLiteral("%1").arg(number, width, 16, QLatin1Char('0'));
}

QString MacText(int group, int number)
{
    return QStringLiteral("01-0C-CD-%1-%2-%3")
        .arg(Hex(group, 2), Hex(number >> 8, 2), Hex(number & 0xFF, 2));
}

// The digits of an address in the very form in which it would be given out, or -1.
int UpperDigit(QChar c)
{
    if (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
        return c.unicode() - '0';
    if (c >= QLatin1Char('A') && c <= QLatin1Char('F'))
        return c.unicode() - 'A' + 10;
    return -1;
}

int FourDigits(QChar a, QChar b, QChar c, QChar d)
{
    int number = 0;
    for (const QChar digit : {a, b, c, d}) {
        const int value = UpperDigit(digit);
        if (value < 0)
            return -1;
        number = number * 16 + value;
    }
    return number;
}

int AppIdNumber(const QString& text)
{
    return text.size() == 4 ? FourDigits(text[0], text[1], text[2], text[3]) : -1;
}

int MacNumber(const QString& text, int group)
{
    if (text.size() != 17 || !text.startsWith(QLatin1String("01-0C-CD-0")) ||
        text[10] != QLatin1Char(static_cast<char>('0' + group)) || text[11] != QLatin1Char('-') ||
        text[14] != QLatin1Char('-'))
        return -1;
    return FourDigits(text[12], text[13], text[15], text[16]);
}

bool HasLetter(int number)
{
    return (number >> 12) > 9 || (number >> 8 & 0xF) > 9 || (number >> 4 & 0xF) > 9 ||
           (number & 0xF) > 9;
}

} // namespace

const AddressKind& GooseAddresses()
{
    static const AddressKind kind{Goose(), 0x0001, 0x3FFF, firstGroup, true, true};
    return kind;
}

const AddressKind& SampledValuesAddresses()
{
    static const AddressKind kind{SampledValues(),    0x4000, 0x7FFF,
                                  sampledValuesGroup, false,  false};
    return kind;
}

NumberSet& AddressPool::MacAddresses(int group)
{
    return group == firstGroup ? m_macAddresses01 : m_macAddresses04;
}

NumberSet* AddressPool::SetOf(const QString& type, const QString& value, int* number)
{
    if (type == ParameterType::AppId) {
        *number = AppIdNumber(value);
        return *number < 0 ? nullptr : &m_appIds;
    }
    if (type != ParameterType::MacAddress)
        return nullptr;
    for (const int group : {firstGroup, sampledValuesGroup}) {
        *number = MacNumber(value, group);
        if (*number >= 0)
            return &MacAddresses(group);
    }
    return nullptr;
}

void AddressPool::Add(const QString& type, const QString& value)
{
    int number = -1;
    if (NumberSet* set = SetOf(type, value, &number))
        set->Insert(number);
}

void AddressPool::Release(const QString& type, const QString& value)
{
    int number = -1;
    if (NumberSet* set = SetOf(type, value, &number))
        m_released.append({set, number});
}

QString AddressPool::TakeAppId()
{
    const int free = m_appIds.FirstGap(m_kind.firstAppId, m_kind.appIdEnd);
    const int appId = qMin(free, m_kind.appIdEnd - 1);
    m_appIds.Insert(appId);
    return Hex(appId, 4).toUpper();
}

bool AddressPool::IsTaken(int fallback)
{
    return m_kind.lowerCaseFallback && HasLetter(fallback)
               ? m_lowerCase.contains(fallback)
               : MacAddresses(m_kind.fallbackGroup).Contains(fallback);
}

void AddressPool::TakeFallback(int fallback)
{
    if (m_kind.lowerCaseFallback && HasLetter(fallback))
        m_lowerCase.insert(fallback);
    else
        MacAddresses(m_kind.fallbackGroup).Insert(fallback);
}

QString AddressPool::FallbackText(int fallback) const
{
    // The digits of the pattern itself are upper case in any case.
    const QString text = MacText(m_kind.fallbackGroup, fallback);
    return m_kind.lowerCaseFallback ? text : text.toUpper();
}

QString AddressPool::TakeMacAddress(const QString& appId)
{
    const int number = AppIdNumber(appId);
    if (!m_macAddresses01.Contains(number)) {
        m_macAddresses01.Insert(number);
        return MacText(firstGroup, number).toUpper();
    }
    while (m_nNextFallback < fallbackEnd && IsTaken(m_nNextFallback))
        ++m_nNextFallback;
    if (m_nNextFallback == fallbackEnd)
        return {};
    TakeFallback(m_nNextFallback);
    return FallbackText(m_nNextFallback);
}

void AddressPool::EndUpdate()
{
    for (const int number : std::as_const(m_lowerCase))
        MacAddresses(m_kind.fallbackGroup).Insert(number);
    m_lowerCase.clear();
    for (const auto& [set, number] : std::as_const(m_released))
        set->Remove(number);
    m_released.clear();
    m_nNextFallback = 0;
}

} // namespace Corvane::Internal
