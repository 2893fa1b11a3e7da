// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_PLAIN_NODES
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_PLAIN_NODES
#endif
#endif

namespace Corvane::Internal
{

/// Memory for the many equal nodes of a tree: no header per node, neighbours in a file are
/// neighbours in memory, and all of it goes back to the system when the last node is given back.
/// Under AddressSanitizer every node is an allocation of its own, so that misuse is found.
template <typename T>
class NodeStore
{
public:
    void* Take();
    void Give(void* memory) noexcept;

private:
    union Node {
        Node* next;
        alignas(T) unsigned char room[sizeof(T)];
    };
    static constexpr std::size_t FirstChunk = 64;
    static constexpr std::size_t LargestChunk = 4096;

    Node* TakeUntouched();

    Node* m_pFree = nullptr;
    Node* m_pUntouched = nullptr;
    Node* m_pEnd = nullptr;
    std::size_t m_uLive = 0;
    std::vector<Node*> m_chunks;
};

template <typename T>
void* NodeStore<T>::Take()
{
#ifdef CORVANE_PLAIN_NODES
    return ::operator new(sizeof(T));
#else
    Node* node = m_pFree;
    if (node)
        m_pFree = node->next;
    else
        node = TakeUntouched();
    ++m_uLive;
    return node;
#endif
}

template <typename T>
void NodeStore<T>::Give(void* memory) noexcept
{
#ifdef CORVANE_PLAIN_NODES
    ::operator delete(memory);
#else
    if (!memory)
        return;
    Node* node = static_cast<Node*>(memory);
    node->next = m_pFree;
    m_pFree = node;
    if (--m_uLive > 0)
        return;
    for (Node* chunk : m_chunks)
        ::operator delete(chunk);
    m_chunks.clear();
    m_pFree = m_pUntouched = m_pEnd = nullptr;
#endif
}

template <typename T>
typename NodeStore<T>::Node* NodeStore<T>::TakeUntouched()
{
    if (m_pUntouched == m_pEnd) {
        const std::size_t count =
            std::min(FirstChunk << std::min<std::size_t>(m_chunks.size(), 16), LargestChunk);
        m_chunks.reserve(m_chunks.size() + 1);
        m_pUntouched = static_cast<Node*>(::operator new(count * sizeof(Node)));
        m_chunks.push_back(m_pUntouched);
        m_pEnd = m_pUntouched + count;
    }
    return m_pUntouched++;
}

} // namespace Corvane::Internal
