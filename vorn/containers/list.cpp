#include <vorn/containers/list.h>

namespace Vorn {

namespace list_impl {
template struct _ListNode<stringbase<unsigned short, wstringfuncs>>;
template class iterator<stringbase<unsigned short, wstringfuncs>>;
template class const_iterator<stringbase<unsigned short, wstringfuncs>>;
}  // namespace list_impl

template class list<stringbase<unsigned short, wstringfuncs>>;

// No allocated head node: the list is its sentinel's links and the count; the empty
// allocator base takes no space.
static_assert(sizeof(list<void*>) == 3 * sizeof(void*), "list layout: next, prev, size");
static_assert(sizeof(list_impl::_ListNode<void*>) == 3 * sizeof(void*),
              "node layout: next, prev, value");

}  // namespace Vorn
