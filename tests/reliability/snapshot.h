// Snapshots: the observable state of a library object as a flat list of tokens, so that
// the allocation-failure sweep can compare what an operation produced with what it
// produces without a failure, and name the one difference a failure may make.
//
// Token shapes the comparison relies on:
//   "'text'"      a string holding a buffer; "~" a string without one (empty())
//   "C<n>:..."    a coordinate vector with n coordinates and its own box
//   "R:..."       one row of an extended grid; "R~" a row that is null
//   "(K" ... ")"  one object of kind K, nested objects inside; "(null)" a null member
//   "[K" ... "]"  a collection of kind K, its members inside
// Running boxes of collections are left out: the tokens describe content. Doubles are
// written in hexadecimal floating point, so equal tokens mean equal bits.
#ifndef VORN_TESTS_RELIABILITY_SNAPSHOT_H
#define VORN_TESTS_RELIABILITY_SNAPSHOT_H

#include <cstdio>
#include <string>
#include <vector>

#include <vorn/vorn.h>

namespace vorn_sweep {

using Tokens = std::vector<std::string>;

inline void Snap(Tokens& out, VornCoordinateVector const& v);
inline void Snap(Tokens& out, VornAttribute const& a);
inline void Snap(Tokens& out, VornAttributeCollection const& c);
inline void Snap(Tokens& out, VornPoint const& p);
inline void Snap(Tokens& out, VornLine const& l);
inline void Snap(Tokens& out, VornPolygon const& p);
inline void Snap(Tokens& out, VornMultiPoint const& m);
inline void Snap(Tokens& out, VornLineCollection const& c);
inline void Snap(Tokens& out, VornPolygonCollection const& c);
inline void Snap(Tokens& out, VornMultiLine const& m);
inline void Snap(Tokens& out, VornMultiPolygon const& m);
inline void Snap(Tokens& out, VornMultiPolygonVector const& v);
inline void Snap(Tokens& out, VornTreatmentZone const& z);
inline void Snap(Tokens& out, VornTreatmentZoneCollection const& c);
inline void Snap(Tokens& out, VornTreatmentZoneEx const& z);
inline void Snap(Tokens& out, VornTreatmentGrid const& g);
inline void Snap(Tokens& out, VornTreatmentGridEx const& g);
inline void Snap(Tokens& out, VornTreatmentPolygon const& t);
inline void Snap(Tokens& out, VornTreatmentPolygonCollection const& c);
inline void Snap(Tokens& out, VornTreatmentMap const& m);
inline void Snap(Tokens& out, IVornObject const& o);
inline void Snap(Tokens& out, VornObjectCollection const& c);

inline std::string Hex(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%a", value);
  return text;
}

inline std::string Number(long long value) { return std::to_string(value); }

// A string token: the text in quotes (units outside printable ASCII as \uXXXX), or "~"
// for a string without a buffer.
template <class C, class F>
std::string Text(stringbase<C, F> const& s) {
  if (s.empty()) return "~";
  std::string out = "'";
  for (unsigned int i = 0; i < s.length(); ++i) {
    unsigned int const unit = static_cast<unsigned int>(s.c_str()[i]) &
                              (sizeof(C) == 1 ? 0xFFu : 0xFFFFu);
    if (unit >= 0x20 && unit < 0x7F) {
      out += static_cast<char>(unit);
    } else {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", unit);
      out += escaped;
    }
  }
  return out + "'";
}

// Text read back through an accessor that never returns null: "~" when there is none,
// since "no buffer" and an allocated "" cannot be told apart there.
inline std::string TextOf(unsigned short const* text) {
  if (*text == 0) return "~";
  return Text(stringbase<unsigned short, wstringfuncs>(text));
}

inline std::string Box(VornBoundbox const& box) {
  if (!box.IsInit()) return "B~";
  return "B" + Hex(box.MinX) + "," + Hex(box.MaxX) + "," + Hex(box.MinY) + "," +
         Hex(box.MaxY);
}

inline void Snap(Tokens& out, VornCoordinateVector const& v) {
  std::string token = "C" + std::to_string(v.Count()) + ":";
  for (VornCoordinate const& c : v) token += Hex(c.X) + "," + Hex(c.Y) + ";";
  out.push_back(token + Box(v));
}

inline void Snap(Tokens& out, VornAttribute const& a) {
  out.push_back("(A");
  out.push_back(Text(a.Name));
  out.push_back("k" + Number(a.DataType()));
  switch (a.DataType()) {
    case String: {
      // A text attribute's Length is its text length; a mismatch is a fault of its own.
      if (static_cast<unsigned int>(a.Length()) != Vorn::text::length(a.ValueString())) {
        out.push_back("BADLENGTH");
      }
      out.push_back(TextOf(a.ValueString()));
      break;
    }
    case Double:
      out.push_back(Hex(a.ValueDouble()) + "/" + Number(a.Length()) + "/" +
                    Number(a.Decimal()));
      break;
    case DateTime: {
      VornDateTime const& d = a.ValueDateTime();
      out.push_back(Number(d.Year) + "-" + Number(d.Month) + "-" + Number(d.Day) + " " +
                    Number(d.Hour) + ":" + Number(d.Minute) + ":" + Number(d.Second));
      break;
    }
    case BLOB: {
      std::string bytes = "blob" + Number(a.Length()) + ":";
      if (a.ValueBLOB() == nullptr) {
        bytes += "null";
      } else {
        for (int i = 0; i < a.Length(); ++i) bytes += Number(a.ValueBLOB()[i]) + ".";
      }
      out.push_back(bytes);
      break;
    }
    default:
      out.push_back(Number(a.ValueInt64()));
      break;
  }
  out.push_back(")");
}

inline void Snap(Tokens& out, VornAttributeCollection const& c) {
  out.push_back(c.IsCaselessCompare() ? "[Ai" : "[A");
  for (VornAttribute const* a : c) Snap(out, *a);
  out.push_back("]");
}

inline void Snap(Tokens& out, VornPoint const& p) {
  out.insert(out.end(), {"(P", Text(p.Tag), Hex(p.Coordinate.X) + "," + Hex(p.Coordinate.Y)});
  Snap(out, p.Attributes);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornLine const& l) {
  out.insert(out.end(), {"(L", Text(l.Tag)});
  Snap(out, l.Coordinates);
  Snap(out, l.Attributes);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornPolygon const& p) {
  out.insert(out.end(), {"(G", Text(p.Tag), p.IsHole ? "hole" : "outer"});
  Snap(out, p.Coordinates);
  Snap(out, p.Attributes);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornMultiPoint const& m) {
  out.insert(out.end(), {"(MP", Text(m.Tag)});
  Snap(out, m.Coordinates);
  Snap(out, m.Attributes);
  out.push_back(")");
}

// Members of an owning collection, null members as "(null)".
template <class Collection>
void SnapMembers(Tokens& out, char const* kind, Collection const& c) {
  out.push_back(std::string("[") + kind);
  for (auto const* member : c) {
    if (member == nullptr) {
      out.push_back("(null)");
    } else {
      Snap(out, *member);
    }
  }
  out.push_back("]");
}

inline void Snap(Tokens& out, VornLineCollection const& c) { SnapMembers(out, "L", c); }
inline void Snap(Tokens& out, VornPolygonCollection const& c) { SnapMembers(out, "G", c); }

inline void Snap(Tokens& out, VornMultiLine const& m) {
  out.insert(out.end(), {"(ML", Text(m.Tag)});
  Snap(out, m.Lines);
  Snap(out, m.Attributes);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornMultiPolygon const& m) {
  out.insert(out.end(), {"(MG", Text(m.Tag)});
  Snap(out, m.Polygons);
  Snap(out, m.Attributes);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornMultiPolygonVector const& v) { SnapMembers(out, "V", v); }

inline void Snap(Tokens& out, VornTreatmentZone const& z) {
  out.insert(out.end(), {"(Z", Number(z.ZoneNumber) + "/" + Hex(z.Rate) + "/" +
                                   Number(z.UserValue)});
  out.push_back(TextOf(z.GetDesignator()));
  out.push_back(TextOf(z.GetUnitName()));
  out.push_back(")");
}

inline void Snap(Tokens& out, VornTreatmentZoneCollection const& c) { SnapMembers(out, "Z", c); }

inline void Snap(Tokens& out, VornTreatmentZoneEx const& z) {
  out.insert(out.end(), {"(ZX", Hex(z.Rate) + "/" + Number(z.ZoneNumber), ")"});
}

inline std::string Geometry(int columns, int rows, double cellWidth, double cellHeight) {
  return std::to_string(columns) + "x" + std::to_string(rows) + "@" + Hex(cellWidth) + "," +
         Hex(cellHeight);
}

inline void Snap(Tokens& out, VornTreatmentGrid const& g) {
  out.insert(out.end(), {"(TG", Text(g.Tag), g.IsInit() ? "init" : "uninit",
                         Geometry(g.NumColumns(), g.NumRows(), g.CellWidth(), g.CellHeight()),
                         Box(g.Boundbox)});
  Snap(out, g.Attributes);
  Snap(out, g.Zones);
  if (g.IsInit()) {
    std::string cells = "cells:";
    unsigned char const* bytes = g;
    for (int i = 0; i < g.NumColumns() * g.NumRows(); ++i) cells += Number(bytes[i]) + ".";
    out.push_back(cells);
  }
  out.push_back(")");
}

inline void Snap(Tokens& out, VornTreatmentGridEx const& g) {
  out.insert(out.end(), {"(TX", Text(g.Tag), g.IsInit() ? "init" : "uninit",
                         Geometry(g.NumColumns(), g.NumRows(), g.CellWidth(), g.CellHeight()),
                         Box(g.Boundbox)});
  Snap(out, g.Attributes);
  if (g.GetZones() != nullptr) {
    for (int row = 0; row < g.NumRows(); ++row) {
      VornTreatmentZoneEx const* cells = g.GetZones()[row];
      if (cells == nullptr) {
        out.push_back("R~");
        continue;
      }
      std::string token = "R:";
      for (int column = 0; column < g.NumColumns(); ++column) {
        token += Hex(cells[column].Rate) + "/" + Number(cells[column].ZoneNumber) + ";";
      }
      out.push_back(token);
    }
  }
  out.push_back(")");
}

inline void Snap(Tokens& out, VornTreatmentPolygon const& t) {
  out.push_back("(T");
  Snap(out, t.Area);
  Snap(out, t.Zone);
  out.push_back(")");
}

inline void Snap(Tokens& out, VornTreatmentPolygonCollection const& c) {
  SnapMembers(out, "T", c);
}

inline void Snap(Tokens& out, VornTreatmentMap const& m) {
  out.insert(out.end(), {"(TM", Text(m.Tag)});
  Snap(out, m.Attributes);
  Snap(out, m.TreatmentPolygons);
  out.push_back(")");
}

// An object of any kind, through its GetType.
inline void Snap(Tokens& out, IVornObject const& o) {
  switch (o.GetType()) {
    case Point: return Snap(out, static_cast<VornPoint const&>(o));
    case Line: return Snap(out, static_cast<VornLine const&>(o));
    case Polygon: return Snap(out, static_cast<VornPolygon const&>(o));
    case MultiPoint: return Snap(out, static_cast<VornMultiPoint const&>(o));
    case MultiLine: return Snap(out, static_cast<VornMultiLine const&>(o));
    case MultiPolygon: return Snap(out, static_cast<VornMultiPolygon const&>(o));
    case TreatmentGrid: return Snap(out, static_cast<VornTreatmentGrid const&>(o));
    case TreatmentMap: return Snap(out, static_cast<VornTreatmentMap const&>(o));
    case TreatmentGridEx: return Snap(out, static_cast<VornTreatmentGridEx const&>(o));
  }
  out.push_back("(unknown kind)");
}

inline void Snap(Tokens& out, VornObjectCollection const& c) { SnapMembers(out, "O", c); }

template <class C, class F>
void Snap(Tokens& out, stringbase<C, F> const& s) {
  out.push_back(Text(s));
}

// The snapshot of one value; a null pointer gives the single token "null".
template <class T>
Tokens Snap(T const& value) {
  Tokens out;
  Snap(out, value);
  return out;
}

template <class T>
Tokens Snap(T const* value) {
  if (value == nullptr) return {"null"};
  return Snap(*value);
}

// The snapshot of a collection with `member` appended behind its last member.
inline Tokens Appended(Tokens collection, Tokens const& member) {
  collection.insert(collection.end() - 1, member.begin(), member.end());
  return collection;
}

}  // namespace vorn_sweep

#endif
