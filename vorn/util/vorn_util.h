// VornUtil: the library's static helpers under one name.
//
// VornUtil gathers the error texts (VornUtilErrors), narrow/wide conversion
// (VornUtilText), timestamps (VornUtilTime) and identifier generation (VornUtilGuid).
// Each part lives with the subsystem that owns it, so that lower subsystems never
// include this header; applications and the higher subsystems call VornUtil::... here.
// The class is never instantiated and holds no state besides VornUtil::GuidSeed.
#ifndef VORN_UTIL_VORN_UTIL_H
#define VORN_UTIL_VORN_UTIL_H

#include <vorn/foundation/conversion.h>
#include <vorn/foundation/exception.h>
#include <vorn/foundation/export.h>
#include <vorn/util/date_time.h>
#include <vorn/util/guid.h>

class VORN_API VornUtil : public VornUtilErrors,
                          public VornUtilText,
                          public VornUtilTime,
                          public VornUtilGuid {
public:
  VornUtil() = delete;
};

#endif
