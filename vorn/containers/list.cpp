#include <vorn/containers/list.h>

namespace Vorn {

namespace list_impl {
template struct _ListNode<stringbase<unsigned short, wstringfuncs>>;
template class iterator<stringbase<unsigned short, wstringfuncs>>;
template class const_iterator<stringbase<unsigned short, wstringfuncs>>;
}  // namespace list_impl

template class list<stringbase<unsigned short, wstringfuncs>>;

}  // namespace Vorn
