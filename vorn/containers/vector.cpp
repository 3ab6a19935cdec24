#include <vorn/containers/vector.h>

namespace Vorn {

template struct exponential_growth<10>;
template struct incremental_growth<10>;

}  // namespace Vorn
