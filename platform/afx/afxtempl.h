#pragma once

// CArray and CList. Indices outside an array, and positions that are null, throw CInvalidArgException*; out of memory is
// std::bad_alloc. An object is used by one thread at a time.

#include <utility>
#include <vector>

#include "afx_exception.h"

// Where an element of a list stands; null is nowhere. Valid until that element is removed.
struct AfxPosition;
using POSITION = AfxPosition*;

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;

    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_items.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return m_items.empty(); }

    // New elements are value-initialised. The second argument of the classic interface, a growth step, is accepted and not
    // needed.
    void SetSize(INT_PTR size, INT_PTR /*growBy*/ = -1) {
        Require(size >= 0 && static_cast<std::size_t>(size) <= m_items.max_size());
        m_items.resize(static_cast<std::size_t>(size));
    }
    void FreeExtra() { m_items.shrink_to_fit(); }
    void RemoveAll() { m_items.clear(); }

    const TYPE& GetAt(INT_PTR index) const { return m_items[Checked(index)].value; }
    TYPE& GetAt(INT_PTR index) { return m_items[Checked(index)].value; }
    TYPE& ElementAt(INT_PTR index) { return GetAt(index); }
    const TYPE& operator[](INT_PTR index) const { return GetAt(index); }
    TYPE& operator[](INT_PTR index) { return GetAt(index); }
    void SetAt(INT_PTR index, ARG_TYPE element) { GetAt(index) = element; }
    void SetAtGrow(INT_PTR index, ARG_TYPE element) {
        Require(index >= 0);
        const TYPE copy(element);  // may be one of ours
        if (index >= GetSize()) {
            SetSize(index + 1);
        }
        GetAt(index) = copy;
    }

    // Index of the new element.
    INT_PTR Add(ARG_TYPE element) {
        m_items.push_back(Item{TYPE(element)});
        return GetUpperBound();
    }
    INT_PTR Append(const CArray& other) {
        const INT_PTR first = GetSize();
        m_items.reserve(m_items.size() + other.m_items.size());
        for (INT_PTR i = 0, count = other.GetSize(); i < count; ++i) {
            m_items.push_back(Item(other.m_items[static_cast<std::size_t>(i)]));
        }
        return first;
    }
    void Copy(const CArray& other) { m_items = other.m_items; }

    // Behind the end the gap is filled with value-initialised elements.
    void InsertAt(INT_PTR index, ARG_TYPE element, INT_PTR count = 1) {
        Require(index >= 0 && count >= 0);
        const Item copy{TYPE(element)};
        if (index > GetSize()) {
            SetSize(index);
        }
        m_items.insert(m_items.begin() + index, static_cast<std::size_t>(count), copy);
    }
    void InsertAt(INT_PTR index, const CArray* other) {
        Require(index >= 0 && other != nullptr);
        const std::vector<Item> copy(other->m_items);  // may be our own
        if (index > GetSize()) {
            SetSize(index);
        }
        m_items.insert(m_items.begin() + index, copy.begin(), copy.end());
    }
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        Require(index >= 0 && count >= 0 && index <= GetSize() && count <= GetSize() - index);
        m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
    }

    // First element, null when there is none. Valid until the array grows.
    const TYPE* GetData() const { return m_items.empty() ? nullptr : &m_items.front().value; }
    TYPE* GetData() { return m_items.empty() ? nullptr : &m_items.front().value; }

private:
    struct Item {  // keeps an array of bool an array of bools
        TYPE value{};
    };

    static void Require(bool valid) {
        if (!valid) {
            AfxThrowInvalidArgException();
        }
    }
    std::size_t Checked(INT_PTR index) const {
        Require(index >= 0 && index < GetSize());
        return static_cast<std::size_t>(index);
    }

    std::vector<Item> m_items;
};

template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject {
public:
    // The classic interface allocates nodes in blocks of this size; here it is only remembered as accepted.
    explicit CList(INT_PTR /*blockSize*/ = 10) {}

    INT_PTR GetCount() const { return m_count; }
    INT_PTR GetSize() const { return m_count; }
    BOOL IsEmpty() const { return m_count == 0; }

    TYPE& GetHead() { return Checked(m_head)->value; }
    const TYPE& GetHead() const { return Checked(m_head)->value; }
    TYPE& GetTail() { return Checked(m_tail)->value; }
    const TYPE& GetTail() const { return Checked(m_tail)->value; }

    POSITION AddHead(ARG_TYPE element) { return Link(nullptr, m_head, element); }
    POSITION AddTail(ARG_TYPE element) { return Link(m_tail, nullptr, element); }
    POSITION InsertBefore(POSITION at, ARG_TYPE element) {
        return at == nullptr ? AddHead(element) : Link(NodeAt(at)->previous, NodeAt(at), element);
    }
    POSITION InsertAfter(POSITION at, ARG_TYPE element) {
        return at == nullptr ? AddTail(element) : Link(NodeAt(at), NodeAt(at)->next, element);
    }
    TYPE RemoveHead() { return Take(Checked(m_head)); }
    TYPE RemoveTail() { return Take(Checked(m_tail)); }
    void RemoveAt(POSITION at) { Take(Checked(NodeAt(at))); }
    void RemoveAll() {
        while (m_head != nullptr) {
            Take(m_head);
        }
    }

    POSITION GetHeadPosition() const { return PositionOf(m_head); }
    POSITION GetTailPosition() const { return PositionOf(m_tail); }
    // The element at `at`, which goes on to its neighbour, or to null at the end.
    TYPE& GetNext(POSITION& at) {
        Node* const node = Checked(NodeAt(at));
        at = PositionOf(node->next);
        return node->value;
    }
    const TYPE& GetNext(POSITION& at) const { return const_cast<CList*>(this)->GetNext(at); }
    TYPE& GetPrev(POSITION& at) {
        Node* const node = Checked(NodeAt(at));
        at = PositionOf(node->previous);
        return node->value;
    }
    const TYPE& GetPrev(POSITION& at) const { return const_cast<CList*>(this)->GetPrev(at); }
    TYPE& GetAt(POSITION at) { return Checked(NodeAt(at))->value; }
    const TYPE& GetAt(POSITION at) const { return Checked(NodeAt(at))->value; }
    void SetAt(POSITION at, ARG_TYPE element) { GetAt(at) = element; }

    // First element equal to `element` behind `after` (null: from the head); null
    // when there is none.
    POSITION Find(ARG_TYPE element, POSITION after = nullptr) const {
        const Node* node = after == nullptr ? m_head : NodeAt(after)->next;
        while (node != nullptr && !(node->value == element)) {
            node = node->next;
        }
        return PositionOf(node);
    }
    POSITION FindIndex(INT_PTR index) const {
        const Node* node = index < 0 || index >= m_count ? nullptr : m_head;
        for (INT_PTR i = 0; node != nullptr && i < index; ++i) {
            node = node->next;
        }
        return PositionOf(node);
    }

    ~CList() override { RemoveAll(); }

private:
    struct Node {
        Node* previous;
        Node* next;
        TYPE value;
    };

    static Node* NodeAt(POSITION at) { return reinterpret_cast<Node*>(at); }
    static POSITION PositionOf(const Node* node) { return reinterpret_cast<POSITION>(const_cast<Node*>(node)); }
    static Node* Checked(Node* node) {
        if (node == nullptr) {
            AfxThrowInvalidArgException();
        }
        return node;
    }

    POSITION Link(Node* previous, Node* next, ARG_TYPE element) {
        Node* const node = new Node{previous, next, TYPE(element)};
        (previous == nullptr ? m_head : previous->next) = node;
        (next == nullptr ? m_tail : next->previous) = node;
        ++m_count;
        return PositionOf(node);
    }
    TYPE Take(Node* node) {
        (node->previous == nullptr ? m_head : node->previous->next) = node->next;
        (node->next == nullptr ? m_tail : node->next->previous) = node->previous;
        --m_count;
        TYPE value(std::move(node->value));
        delete node;
        return value;
    }

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    INT_PTR m_count = 0;
};
