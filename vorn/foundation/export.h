// VORN_API marks the library's public interface. The library is built with hidden
// default visibility, so only what carries this macro is exported. Exception classes
// and polymorphic classes are exported whole, so that a caller's catch and
// dynamic_cast work across the library boundary.
#ifndef VORN_FOUNDATION_EXPORT_H
#define VORN_FOUNDATION_EXPORT_H

#define VORN_API __attribute__((visibility("default")))

#endif
