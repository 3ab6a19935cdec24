#include <vorn/geometry/object.h>

IVornObject::~IVornObject() {}

IVornObject::IVornObject(IVornObject const& other) : VornAllocator(other), Tag() {
  Tag = other.Tag;
}

IVornObject& IVornObject::operator=(IVornObject const& other) {
  // The string frees its buffer before reading the source, so it must not read itself.
  if (this != &other) Tag = other.Tag;
  return *this;
}
