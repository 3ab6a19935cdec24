#include <vorn/geometry/multi_line.h>

VornMultiLine::VornMultiLine() : Lines(), Attributes() {}

VornMultiLine::VornMultiLine(VornMultiLine const& other) : IVornObject(), Lines(), Attributes() {
  *this = other;
}

VornMultiLine::~VornMultiLine() {}

VornMultiLine const& VornMultiLine::operator=(VornMultiLine const& other) {
  // The attribute collection empties itself on self-assignment; a multi-line must not.
  if (this == &other) return *this;
  IVornObject::operator=(other);
  Lines = other.Lines;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornMultiLine::GetType() const { return MultiLine; }

void VornMultiLine::Transform(VornTransformCallback callback, void* context) {
  Lines.Transform(callback, context);
}
