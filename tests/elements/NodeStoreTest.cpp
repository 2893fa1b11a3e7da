// SPDX-License-Identifier: Apache-2.0
#include <corvane/elements/NodeStore.h>

#include <QObject>
#include <QTest>

#include <cstdint>
#include <cstring>
#include <random>
#include <set>
#include <vector>

using Corvane::Internal::NodeStore;

namespace
{

struct Small {
    char byte;
};

struct Large {
    std::uint64_t words[9];
};

struct alignas(16) Aligned {
    char bytes[20];
};

void* Take(NodeStore<Large>& store, unsigned char mark)
{
    void* node = store.Take();
    std::memset(node, mark, sizeof(Large));
    return node;
}

bool IsWhole(const void* node, unsigned char mark)
{
    const auto* bytes = static_cast<const unsigned char*>(node);
    for (std::size_t i = 0; i < sizeof(Large); ++i) {
        if (bytes[i] != mark)
            return false;
    }
    return true;
}

template <typename T>
void TakeManyAligned()
{
    NodeStore<T> store;
    std::vector<void*> nodes;
    nodes.reserve(1000);
    for (int i = 0; i < 1000; ++i) {
        nodes.push_back(store.Take());
        QCOMPARE(int(reinterpret_cast<std::uintptr_t>(nodes.back()) % alignof(T)), 0);
    }
    for (void* node : nodes)
        store.Give(node);
}

} // namespace

class NodeStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nodesDoNotOverlap();
    void nodesAreAligned();
    void nothingCanBeGivenBack();
    void nodesComeAndGoInAnyOrder();
    void theStoreStartsOverWhenTheLastNodeIsGone();
    void storesAreApart();
};

void NodeStoreTest::nodesDoNotOverlap()
{
    NodeStore<Large> store;
    constexpr int count = 20000;
    std::vector<void*> nodes;
    nodes.reserve(count);
    for (int i = 0; i < count; ++i)
        nodes.push_back(Take(store, static_cast<unsigned char>(i)));
    QCOMPARE(std::set<void*>(nodes.begin(), nodes.end()).size(), std::size_t(count));
    for (int i = 0; i < count; ++i)
        QVERIFY(IsWhole(nodes[std::size_t(i)], static_cast<unsigned char>(i)));
    for (void* node : nodes)
        store.Give(node);
}

void NodeStoreTest::nodesAreAligned()
{
    TakeManyAligned<Small>();
    TakeManyAligned<Large>();
    TakeManyAligned<Aligned>();
}

void NodeStoreTest::nothingCanBeGivenBack()
{
    NodeStore<Large> store;
    store.Give(nullptr);
    void* node = Take(store, 1);
    store.Give(nullptr);
    QVERIFY(IsWhole(node, 1));
    store.Give(node);
}

void NodeStoreTest::nodesComeAndGoInAnyOrder()
{
    NodeStore<Large> store;
    std::mt19937 random(11);
    std::vector<std::pair<void*, unsigned char>> live;
    for (int i = 0; i < 200000; ++i) {
        if (live.empty() || random() % 5 < 3) {
            const auto mark = static_cast<unsigned char>(random());
            live.emplace_back(Take(store, mark), mark);
            continue;
        }
        const std::size_t at = random() % live.size();
        QVERIFY(IsWhole(live[at].first, live[at].second));
        store.Give(live[at].first);
        live[at] = live.back();
        live.pop_back();
    }
    for (const auto& node : live) {
        QVERIFY(IsWhole(node.first, node.second));
        store.Give(node.first);
    }
}

void NodeStoreTest::theStoreStartsOverWhenTheLastNodeIsGone()
{
    NodeStore<Large> store;
    for (int round = 0; round < 100; ++round) {
        std::vector<void*> nodes;
        nodes.reserve(500);
        for (int i = 0; i < 500; ++i)
            nodes.push_back(Take(store, static_cast<unsigned char>(round)));
        for (void* node : nodes) {
            QVERIFY(IsWhole(node, static_cast<unsigned char>(round)));
            store.Give(node);
        }
    }
}

void NodeStoreTest::storesAreApart()
{
    NodeStore<Large> first;
    NodeStore<Large> second;
    void* kept = Take(first, 1);
    void* given = Take(second, 2);
    second.Give(given);
    QVERIFY(IsWhole(kept, 1));
    void* taken = Take(second, 3);
    QVERIFY(taken != kept);
    QVERIFY(IsWhole(kept, 1));
    first.Give(kept);
    second.Give(taken);
}

QTEST_APPLESS_MAIN(NodeStoreTest)
#include "NodeStoreTest.moc"
