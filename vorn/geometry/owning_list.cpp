#include <vorn/geometry/owning_list.h>

#include <vorn/foundation/exception.h>

namespace Vorn {
namespace detail {

void throw_parameter_is_null() { throw VornException("Parameter is NULL", 5003); }

void throw_index_out_of_range() { throw VornException("Index out of range", 5002); }

}  // namespace detail
}  // namespace Vorn
