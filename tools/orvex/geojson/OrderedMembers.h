// OrderedMembers - the members of a JSON object in the order of the text. Unlike a vector of them it never copies what
// a member holds, and finds a name among many in logarithmic time: a text of any kind is read in n log n.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

namespace orvex::tool {

/// What nlohmann::basic_json takes for its objects.
template <class Name, class Value, class = std::less<>, class Allocator = std::allocator<std::pair<const Name, Value>>>
class OrderedMembers {
  using List = std::list<std::pair<const Name, Value>, Allocator>;

 public:
  using key_type = Name;
  using mapped_type = Value;
  using value_type = std::pair<const Name, Value>;
  using key_compare = std::less<>;
  using size_type = std::size_t;
  using iterator = typename List::iterator;
  using const_iterator = typename List::const_iterator;

  OrderedMembers() = default;
  ~OrderedMembers() = default;
  OrderedMembers(const OrderedMembers& other) : m_members(other.m_members) { Index(m_members.begin()); }
  OrderedMembers(OrderedMembers&&) noexcept = default;
  OrderedMembers& operator=(OrderedMembers other) {
    m_members.swap(other.m_members);
    m_index.swap(other.m_index);
    return *this;
  }

  iterator begin() { return m_members.begin(); }
  iterator end() { return m_members.end(); }
  const_iterator begin() const { return m_members.begin(); }
  const_iterator end() const { return m_members.end(); }
  const_iterator cbegin() const { return m_members.begin(); }
  const_iterator cend() const { return m_members.end(); }
  bool empty() const { return m_members.empty(); }
  size_type size() const { return m_members.size(); }
  size_type max_size() const { return m_members.max_size(); }

  iterator find(std::string_view name) {
    if (m_index.empty()) return std::find_if(begin(), end(), [&](const value_type& m) { return m.first == name; });
    const auto found = m_index.find(name);
    return found == m_index.end() ? end() : found->second;
  }
  const_iterator find(std::string_view name) const { return const_cast<OrderedMembers*>(this)->find(name); }
  size_type count(std::string_view name) const { return find(name) == end() ? 0 : 1; }

  std::pair<iterator, bool> emplace(std::string_view name, Value value) {
    const iterator found = find(name);
    if (found != end()) return {found, false};
    m_members.emplace_back(Name(name), std::move(value));
    const iterator added = std::prev(end());
    Index(m_index.empty() ? begin() : added);
    return {added, true};
  }
  Value& operator[](std::string_view name) { return emplace(name, Value()).first->second; }

  iterator erase(const_iterator member) {
    m_index.erase(member->first);
    return m_members.erase(member);
  }
  size_type erase(std::string_view name) {
    const iterator found = find(name);
    if (found == end()) return 0;
    erase(const_iterator(found));
    return 1;
  }
  void clear() {
    m_index.clear();
    m_members.clear();
  }

  friend bool operator==(const OrderedMembers& a, const OrderedMembers& b) { return a.m_members == b.m_members; }

 private:
  /// Up to here they are found sooner one by one.
  static constexpr size_type kFew = 16;

  void Index(iterator from) {
    if (size() <= kFew) return;
    for (; from != end(); ++from) m_index.emplace(from->first, from);
  }

  List m_members;
  std::map<std::string_view, iterator> m_index;  // empty: there are few
};

}  // namespace orvex::tool
