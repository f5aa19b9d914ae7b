#pragma once

// A stack whose first entries need no free store. Internal to the library.

#include <cstddef>
#include <vector>

namespace kadata::formula {

template <class Entry, std::size_t FIRST>
class Stack {
public:
    std::size_t Size() const { return m_size; }
    bool IsEmpty() const { return m_size == 0; }
    const Entry& Top() const { return m_size <= FIRST ? m_first[m_size - 1] : m_more.back(); }
    void Push(const Entry& entry) {
        if (m_size < FIRST) {
            m_first[m_size] = entry;
        } else {
            m_more.push_back(entry);
        }
        ++m_size;
    }
    void Pop() {
        if (m_size > FIRST) {
            m_more.pop_back();
        }
        --m_size;
    }

private:
    std::size_t m_size = 0;
    Entry m_first[FIRST];
    std::vector<Entry> m_more;
};

}  // namespace kadata::formula
