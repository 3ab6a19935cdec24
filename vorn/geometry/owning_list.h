// Vorn::owning_list: the ownership machinery shared by the list-based collections of
// geometry (lines, polygons) and of treatment areas.
//
// An owning list holds heap objects by pointer in a Vorn::list, in insertion order, and
// keeps Boundbox, the union of their boxes. It owns what it holds:
//   - Add stores a copy made on the VornMalloc channel; AddReference adopts the caller's
//     heap object itself.
//   - RemoveAt, Clear and the destructor delete what they take out; RemoveReference and
//     RemoveAllReferences only detach, handing the objects back to the caller.
//   - The copy constructor is shallow (the copy refers to the very same objects, and its
//     box is a member-wise copy whose references still view the source's values); the
//     caller must detach one side with RemoveAllReferences before both are destroyed.
//     Assignment (Assign) is deep: it deletes the target's objects and adds copies.
// When AutoBoundbox is true, additions and removals keep Boundbox current.
//
// The collections differ in a few deliberate points. Each names its choice in a rules
// struct passed as the second template argument, which provides:
//   static VornBoundbox const& BoxOf(T const&);            the element's box
//   static void TransformElement(T&, VornTransformCallback, void*);
//   static constexpr bool kRejectsNull;                    AddReference(nullptr) throws
//   static constexpr IndexRule kIndexRule;
//   static constexpr BoxOnAdd kBoxOnAdd;
//   static constexpr BoxOnClear kBoxOnClear;
//   static constexpr CallbackTest kCallbackTest;
//   static constexpr bool kRecalcAfterTransform;           Transform ends with RecalcBoundbox
//   static constexpr bool kGuardsSelfAssignment;           Assign(*this) keeps the contents
// The public collection classes derive from an instantiation and add their own
// constructors, assignment and extra operations through the protected members (Assign,
// Adopt, Link, AppendUnchecked, RemoveNode, at and the list itself).
//
// Elements must derive from VornAllocator, so that copies come from VornMalloc (a null
// result skips the constructor) and deletion returns them to VornFree.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_OWNING_LIST_H
#define VORN_GEOMETRY_OWNING_LIST_H

#include <cassert>
#include <iterator>
#include <type_traits>

#include <vorn/containers/list.h>
#include <vorn/core/boundbox.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>

namespace Vorn {

// Position checks of operator[], at, RemoveAt and RemoveReference.
enum class IndexRule {
  Checked,    // an index >= Count() throws VornException("Index out of range", 5002)
  Unchecked,  // removals ignore it; operator[] and at leave it to the caller (asserted)
};

// Whether AddReference (and so Add) widens Boundbox.
enum class BoxOnAdd { IfAuto, Always };

// Whether Clear resets Boundbox.
enum class BoxOnClear { IfAuto, Always };

// Where Transform tests for a null callback.
enum class CallbackTest {
  BeforeReset,  // nothing changes on a null callback
  AfterReset,   // a null callback leaves Boundbox reset
  None,         // left to the elements' own transformation
};

namespace detail {
// Out of line: the rare paths of the owning lists.
[[noreturn]] VORN_API void throw_parameter_is_null();
[[noreturn]] VORN_API void throw_index_out_of_range();
}  // namespace detail

// Rules part shared by collections whose elements keep their geometry in a coordinate
// vector (`Coordinates`): that vector is the element's box, and the collection maps it
// directly instead of calling the element's virtual Transform.
template <class T>
struct VORN_API coordinate_vector_elements {
  static VornBoundbox const& BoxOf(T const& element) { return element.Coordinates; }
  static void TransformElement(T& element, VornTransformCallback callback, void* context) {
    element.Coordinates.Transform(callback, context);
  }
};

template <class T, class Rules>
class VORN_API owning_list {
  static_assert(std::is_base_of<VornAllocator, T>::value,
                "owned elements are allocated on the VornMalloc channel");

public:
  typedef list_impl::iterator<T*> iterator;
  typedef list_impl::const_iterator<T*> const_iterator;

  // Layout: Boundbox, the pointer list, AutoBoundbox, in this order.
  VornBoundbox Boundbox;

protected:
  list<T*, allocator> m_items;

public:
  bool AutoBoundbox;

  unsigned int Count() const { return m_items.size(); }

  // The element at `index`, found by walking from the first. Checked lists throw
  // VornException("Index out of range", 5002) when index >= Count().
  T const& operator[](unsigned int index) const { return **at(index); }

  iterator begin() { return m_items.begin(); }
  iterator end() { return m_items.end(); }
  const_iterator begin() const { return m_items.begin(); }
  const_iterator end() const { return m_items.end(); }

  // Appends `element` and takes ownership of it, widening Boundbox by its box as the
  // rules say. Throws VornException("Parameter is NULL", 5003) for a null element when
  // the rules reject it, and when no list node can be allocated; in both cases nothing
  // changes and the caller keeps the object.
  void AddReference(T* element) {
    if (Rules::kRejectsNull && element == nullptr) detail::throw_parameter_is_null();
    if (!Link(element)) detail::throw_parameter_is_null();
  }

  // Appends a copy of `element` made on the VornMalloc channel, as AddReference does.
  // Note: running out of memory (for the copy or its list node) is reported as
  // VornException("Parameter is NULL", 5003), with nothing changed and nothing leaked;
  // an exception from the copy constructor passes through, its storage released.
  void Add(T const& element) { Adopt(new T(element)); }

  // Deletes the element at `index` and unlinks it; RecalcBoundbox when AutoBoundbox.
  // Checked lists throw VornException("Index out of range", 5002) when index >= Count();
  // unchecked lists then do nothing.
  void RemoveAt(unsigned int index) {
    if (IsValidRemoval(index)) RemoveNode(at(index));
  }

  // As RemoveAt, but the element is only unlinked: it belongs to the caller again, who
  // must have fetched its pointer beforehand.
  void RemoveReference(unsigned int index) {
    if (!IsValidRemoval(index)) return;
    m_items.erase(at(index));
    RecalcIfAuto();
  }

  // Unlinks every element without deleting any; RecalcBoundbox when AutoBoundbox.
  void RemoveAllReferences() {
    m_items.clear();
    RecalcIfAuto();
  }

  // Deletes every element and empties the list; resets Boundbox as the rules say.
  void Clear() {
    for (iterator it = m_items.begin(); it != m_items.end(); ++it) delete *it;
    m_items.clear();
    if (Rules::kBoxOnClear == BoxOnClear::Always || AutoBoundbox) Boundbox.Reset();
  }

  // Rebuilds Boundbox as the union of the elements' boxes, in order; uninitialised when
  // the list is empty. An element's box is used whatever its state, so an element that
  // was never filled contributes 0..0 x 0..0.
  void RecalcBoundbox() {
    Boundbox.Reset();
    for (const_iterator it = m_items.begin(); it != m_items.end(); ++it) Widen(*it);
  }

  // Maps every element through the callback, in order, and rebuilds Boundbox from the
  // mapped boxes whatever AutoBoundbox says. A null callback throws
  // VornException("Parameter is NULL", 5003) where the rules place the test. A callback
  // that throws part-way leaves the earlier elements mapped and Boundbox covering them.
  void Transform(VornTransformCallback callback, void* context) {
    if (Rules::kCallbackTest == CallbackTest::BeforeReset && callback == nullptr) {
      detail::throw_parameter_is_null();
    }
    Boundbox.Reset();
    if (Rules::kCallbackTest == CallbackTest::AfterReset && callback == nullptr) {
      detail::throw_parameter_is_null();
    }
    for (iterator it = m_items.begin(); it != m_items.end(); ++it) {
      if (*it == nullptr) continue;
      Rules::TransformElement(**it, callback, context);
      Widen(*it);
    }
    if (Rules::kRecalcAfterTransform) RecalcBoundbox();
  }

protected:
  explicit owning_list(bool autoBoundbox) : Boundbox(), m_items(), AutoBoundbox(autoBoundbox) {}

  // Shallow on purpose: see the header comment.
  owning_list(owning_list const& other)
      : Boundbox(other.Boundbox), m_items(other.m_items), AutoBoundbox(other.AutoBoundbox) {}

  ~owning_list() { Clear(); }

  owning_list& operator=(owning_list const&) = delete;

  // Deep assignment: Clear, then Add a copy of every element of `other` in order;
  // AutoBoundbox is kept. Without the self-assignment guard, assigning a list to itself
  // empties it. A failure part-way keeps the copies made so far.
  void Assign(owning_list const& other) {
    if (Rules::kGuardsSelfAssignment && this == &other) return;
    Clear();
    for (const_iterator it = other.m_items.begin(); it != other.m_items.end(); ++it) {
      if (*it != nullptr) Add(**it);
    }
  }

  // Takes ownership of a copy this list has just made: a null copy (allocation failed)
  // and a copy that finds no list node both throw VornException("Parameter is NULL",
  // 5003), the latter after deleting the copy.
  void Adopt(T* copy) {
    if (copy == nullptr) detail::throw_parameter_is_null();
    if (!Link(copy)) {
      delete copy;
      detail::throw_parameter_is_null();
    }
  }

  // Deletes the element under `it`, unlinks it, RecalcBoundbox when AutoBoundbox.
  void RemoveNode(iterator it) {
    assert(it != m_items.end());
    delete *it;
    m_items.erase(it);
    RecalcIfAuto();
  }

  // Appends `element` as it is: no null test, Boundbox untouched. Returns false, with
  // nothing changed, when no list node can be allocated; the caller then still owns the
  // element. For collections whose Add widens the box by the source itself and keeps a
  // copy that could not be allocated as a null member instead of failing.
  bool AppendUnchecked(T* element) {
    iterator node = m_items.insert(m_items.end());
    if (node == m_items.end()) return false;
    *node = element;
    return true;
  }

  // As AppendUnchecked, then widens Boundbox by the element's box as the rules say (a
  // null element widens nothing).
  bool Link(T* element) {
    if (!AppendUnchecked(element)) return false;
    if (Rules::kBoxOnAdd == BoxOnAdd::Always || AutoBoundbox) Widen(element);
    return true;
  }

  // The position `index` steps from the first element. Checked lists throw
  // VornException("Index out of range", 5002) when index >= Count().
  iterator at(unsigned int index) {
    CheckIndex(index);
    return std::next(m_items.begin(), index);
  }

  const_iterator at(unsigned int index) const {
    CheckIndex(index);
    return std::next(m_items.begin(), index);
  }

private:
  void Widen(T const* element) {
    if (element != nullptr) Boundbox.AddBoundbox(Rules::BoxOf(*element));
  }

  void RecalcIfAuto() {
    if (AutoBoundbox) RecalcBoundbox();
  }

  void CheckIndex(unsigned int index) const {
    if (Rules::kIndexRule == IndexRule::Checked) {
      if (index >= Count()) detail::throw_index_out_of_range();
    } else {
      assert(index < Count() && "position beyond the end of an unchecked owning list");
    }
  }

  // Whether a removal at `index` goes ahead: checked lists throw when it is out of range,
  // unchecked ones skip it silently.
  bool IsValidRemoval(unsigned int index) const {
    if (index < Count()) return true;
    if (Rules::kIndexRule == IndexRule::Checked) detail::throw_index_out_of_range();
    return false;
  }
};

}  // namespace Vorn

#endif
