// VornMultiLine: several lines under one set of attributes.
//
// The multi-line owns its line collection, and through it every line it holds: deleting
// or clearing the multi-line deletes them. The collection keeps the box of all lines.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_MULTI_LINE_H
#define VORN_GEOMETRY_MULTI_LINE_H

#include <vorn/core/attribute_collection.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/line_collection.h>
#include <vorn/geometry/object.h>

class VORN_API VornMultiLine : public IVornObject {
public:
  // Built with AutoBoundbox true.
  VornLineCollection Lines;
  VornAttributeCollection Attributes;

  VornMultiLine();
  // Builds an empty multi-line, then assigns from `other` (the lines are deep copies).
  VornMultiLine(VornMultiLine const& other);
  ~VornMultiLine() override;

  // Copies Tag, Lines (deep), then Attributes. Assigning a multi-line to itself leaves it
  // unchanged. Failures of the collections' copies pass through.
  VornMultiLine const& operator=(VornMultiLine const& other);

  // MultiLine (4).
  VornObjectType GetType() const override;

  // Lines.Transform(callback, context): a null callback throws
  // VornException("Parameter is NULL", 5003) with nothing changed.
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
