// The flat list of a lake: doubly linked, with stable positions, its nodes in the blocks of a pool.
//
// It offers what a lake needs of std::list, under the same names. What it has beyond that is position(): the
// position of a node is known from the node alone.
#pragma once

#include <paramdb/storage/node_pool.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
#include <type_traits>
#include <utility>

namespace paramdb {

// The links of a node, from which a class derives whose objects stand in a NodeList. They belong to the place
// in the list: copying an object neither copies nor changes them.
class NodeLinks {
protected:
    NodeLinks() = default;
    NodeLinks(NodeLinks const&) {}
    NodeLinks& operator=(NodeLinks const&) { return *this; }
    ~NodeLinks() = default;

private:
    template <class Node>
    friend class NodeList;
    template <class Node>
    friend class NodePosition;
    template <class Node>
    friend class NodeRuns;
    NodeLinks* m_previous = nullptr;
    NodeLinks* m_next = nullptr;
};

template <class Node>
class NodeRuns;

// A position in the list: a bidirectional iterator. It stays valid until its node is erased; a default
// constructed one is null. Node may be const.
template <class Node>
class NodePosition {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = std::remove_const_t<Node>;
    using difference_type = std::ptrdiff_t;
    using pointer = Node*;
    using reference = Node&;

    NodePosition() = default;
    template <class Mutable>
    requires std::is_same_v<Mutable const, Node> NodePosition(NodePosition<Mutable> const& other)
        : m_links(other.m_links) {}

    Node& operator*() const { return static_cast<Node&>(*m_links); }
    Node* operator->() const { return &**this; }
    NodePosition& operator++() {
        m_links = m_links->m_next;
        return *this;
    }
    NodePosition operator++(int) {
        NodePosition const old = *this;
        ++*this;
        return old;
    }
    NodePosition& operator--() {
        m_links = m_links->m_previous;
        return *this;
    }
    NodePosition operator--(int) {
        NodePosition const old = *this;
        --*this;
        return old;
    }
    friend bool operator==(NodePosition const& left, NodePosition const& right) {
        return left.m_links == right.m_links;
    }

private:
    template <class Other>
    friend class NodeList;
    friend class NodeRuns<Node>;
    friend class NodePosition<Node const>;
    explicit NodePosition(NodeLinks* links) : m_links(links) {}
    NodeLinks* m_links = nullptr;
};

template <class Node>
class NodeList {
public:
    using value_type = Node;
    using size_type = std::size_t;
    using iterator = NodePosition<Node>;
    using const_iterator = NodePosition<Node const>;

    // An empty list whose nodes come from the pool, which must outlive it. Lists of one pool can exchange
    // nodes.
    explicit NodeList(NodePool& pool) : m_pool(&pool) { Reset(); }
    NodeList(NodeList const&) = delete;
    NodeList& operator=(NodeList const&) = delete;
    ~NodeList() { clear(); }

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    // Another number whenever nodes have come or gone, and when somebody has told that a node is another one.
    std::uint64_t revision() const { return m_revision; }
    void node_changed() { ++m_revision; }
    iterator begin() { return iterator(m_ends.m_next); }
    iterator end() { return iterator(&m_ends); }
    const_iterator begin() const { return const_cast<NodeList*>(this)->begin(); }
    const_iterator end() const { return const_cast<NodeList*>(this)->end(); }
    Node& front() { return *begin(); }
    Node const& front() const { return *begin(); }

    // The position of a node that stands in a list.
    static iterator position(Node& node) { return iterator(static_cast<NodeLinks*>(&node)); }
    // False for a node that was made outside of any list.
    static bool stands_in_list(Node const& node) {
        return static_cast<NodeLinks const&>(node).m_next != nullptr;
    }

    // Makes a node before the position. Throws what the allocation or the node's constructor throws, and
    // leaves the list as it was then.
    template <class... Arguments>
    iterator emplace(iterator before, Arguments&&... arguments) {
        void* const slot = m_pool->Allocate();
        Node* node;
        try {
            node = ::new (slot) Node(std::forward<Arguments>(arguments)...);
        } catch (...) {
            m_pool->Free(slot);
            throw;
        }
        Link(before.m_links->m_previous, node);
        Link(node, before.m_links);
        ++m_size;
        ++m_revision;
        return iterator(node);
    }
    template <class... Arguments>
    Node& emplace_back(Arguments&&... arguments) {
        return *emplace(end(), std::forward<Arguments>(arguments)...);
    }

    // Destroys one node; the result is the position behind it.
    iterator erase(iterator position) noexcept {
        NodeLinks* const next = position.m_links->m_next;
        Link(position.m_links->m_previous, next);
        Destroy(position);
        --m_size;
        ++m_revision;
        return iterator(next);
    }
    void erase(iterator first, iterator last) noexcept {
        while (first != last)
            first = erase(first);
    }
    void clear() noexcept {
        for (iterator position = begin(); position != end();)
            Destroy(position++);
        Reset();
    }

    // Moves all nodes of the other list, which is of the same pool, to the end of this one.
    void splice_back(NodeList& other) noexcept {
        if (other.empty())
            return;
        Link(m_ends.m_previous, other.m_ends.m_next);
        Link(other.m_ends.m_previous, &m_ends);
        m_size += other.m_size;
        ++m_revision;
        other.Reset();
    }

private:
    struct Ends : NodeLinks {};

    static void Link(NodeLinks* left, NodeLinks* right) noexcept {
        left->m_next = right;
        right->m_previous = left;
    }
    void Reset() noexcept {
        Link(&m_ends, &m_ends);
        m_size = 0;
        ++m_revision;
    }
    void Destroy(iterator position) noexcept {
        Node* const node = &*position;
        node->~Node();
        m_pool->Free(node);
    }

    NodePool* m_pool;
    Ends m_ends;
    std::size_t m_size = 0;
    std::uint64_t m_revision = 0;
};

} // namespace paramdb
