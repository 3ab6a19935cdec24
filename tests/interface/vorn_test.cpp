// Touches every class and function of the public interface through <vorn/vorn.h> alone,
// so that a declaration or an export that goes missing breaks this build or its link.
#include <vorn/vorn.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>

namespace {

unsigned short const* W(char16_t const* text) {
  return reinterpret_cast<unsigned short const*>(text);
}

void Shift(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 1;
  *outY = y + 1;
}

VornCoordinate square[] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}};

TEST(PublicInterface, FoundationAndUtilities) {
  VornFree(VornMalloc(4));
  stringbase<char, astringfuncs> narrow("abc");
  stringbase<unsigned short, wstringfuncs> wide = VornUtil::StringToWString(narrow);
  narrow += "d";
  EXPECT_STREQ((narrow + "e").c_str(), "abcde");
  EXPECT_STREQ(VornUtil::WStringToString(wide).c_str(), "abc");
  EXPECT_STREQ(VornUtil::WStringToString(wide.c_str()).c_str(), "abc");
  EXPECT_STREQ(VornUtil::WStringToString(wide.c_str(), 2).c_str(), "ab");
  EXPECT_EQ(VornUtil::StringToWString("xyz").length(), 3u);
  EXPECT_EQ(VornUtil::StringToWString("xyz", 2).length(), 2u);
  char buffer[8];
  EXPECT_EQ(VornUtil::WStringToString(wide, buffer, 7), 3u);

  VornException error("Out of range", 5002, std::int64_t{-1});
  EXPECT_STREQ(error.Message(), "Out of range : -1");
  EXPECT_STREQ(VornUtil::GetErrorString(error.ErrorCode()), "Out of range");

  std::tm stamp{};
  ASSERT_TRUE(VornUtil::ParseTimestamp(&stamp, "2021-06-15 14:05:09"));
  VornDateTime date = VornUtil::TimestampToDateTime(stamp);
  EXPECT_TRUE(VornUtil::ParseTimestamp(&date, "2021-06-15 14:05:09"));
  EXPECT_EQ(VornUtil::DateTimeToTimestamp(date).tm_mday, 15);
  unsigned long const seconds = VornUtil::TimestampToTime(&stamp);
  EXPECT_EQ(VornUtil::TimeToTimestamp(&seconds).tm_year, 121);
  char guid[37];
  EXPECT_EQ(VornUtil::GenerateGuid(guid), guid);
  EXPECT_EQ(VornUtil::GenerateGuid().length(), 36u);
  EXPECT_EQ(VornUtil::GuidSeed, 2);
}

TEST(PublicInterface, ContainersAndCoreValues) {
  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> coords;
  EXPECT_TRUE(coords.push_back(square[1]));
  EXPECT_EQ(Vorn::incremental_growth<10>::get_growth(0, 0, 1), 11u);
  Vorn::list<stringbase<unsigned short, wstringfuncs>, Vorn::allocator> names;
  EXPECT_NE(names.insert(names.end()), names.end());

  VornBoundbox box(0, 1, 0, 1);
  box.AddCoordinates(coords);
  EXPECT_TRUE(box.HasIntersection(VornBoundbox(1, 2, 1, 2)));
  VornCoordinateVector vector(square, 5);
  vector.Transform(Shift, nullptr);
  EXPECT_TRUE(vector.IsPointInBoundbox(VornCoordinate{2, 2}));

  VornAttributeCollection attributes;
  attributes.Add(W(u"Rate"), 1.5);
  attributes.Add(W(u"Count"), 3);
  attributes.Add(W(u"Big"), std::int64_t{1} << 40);
  attributes.Add(W(u"Flag"), true);
  attributes.Add(W(u"Name"), W(u"Field"));
  attributes.Add("Crop", "Wheat");
  attributes.Add(W(u"When"), VornDateTime{9, 5, 14, 15, 6, 2021});
  unsigned char const blob[] = {1, 2, 3};
  attributes.Add(W(u"Bytes"), blob, 3);
  EXPECT_EQ(attributes.Count(), 8u);
  EXPECT_EQ(attributes[2].DataType(), Int64);
  VornAttribute* attribute = Vorn::Alloc_VornAttribute();
  ASSERT_NE(attribute, nullptr);
  attribute->SetValue(W(u"text"));
  Vorn::Free_VornAttribute(attribute);
}

TEST(PublicInterface, GeometryObjectsAndFactories) {
  VornObjectCollection objects;
  objects.AddReference(Vorn::Alloc_VornPoint(1, 2));
  objects.AddReference(Vorn::Alloc_VornLine(square, 5));
  objects.AddReference(Vorn::Alloc_VornPolygon(square, 5, false));
  objects.AddReference(Vorn::Alloc_VornMultiPoint());
  objects.AddReference(Vorn::Alloc_VornMultiLine());
  VornMultiPolygon* area = Vorn::Alloc_VornMultiPolygon();
  ASSERT_NE(area, nullptr);
  area->Polygons.Add(square, 5, false);
  area->SortHoles();
  area->RemoveHoles();
  objects.AddReference(area);
  objects.Transform(Shift, nullptr);
  EXPECT_EQ(objects[0].GetType(), Point);

  VornLineCollection lines(false);
  lines.Add(square, 5);
  VornPolygonCollection rings;
  rings.Add(square, 5, true);
  VornMultiPolygonVector areas;
  areas.Add(*area);
  EXPECT_EQ(lines.Count() + rings.Count() + areas.Count(), 3u);

  VornObjectCollection* copies = Vorn::Alloc_VornObjectCollection();
  ASSERT_NE(copies, nullptr);
  copies->AddRange(objects);
  EXPECT_EQ(copies->Count(), objects.Count());
  Vorn::Free_VornObjectCollection(copies);
  Vorn::Free_VornPoint(nullptr);
  Vorn::Free_VornLine(nullptr);
  Vorn::Free_VornPolygon(nullptr);
  Vorn::Free_VornMultiPoint(nullptr);
  Vorn::Free_VornMultiLine(nullptr);
  Vorn::Free_VornMultiPolygon(nullptr);
}

TEST(PublicInterface, TreatmentModel) {
  VornTreatmentZone* zone = Vorn::Alloc_VornTreatmentZone();
  VornTreatmentZoneEx* cell = Vorn::Alloc_VornTreatmentZoneEx();
  VornTreatmentPolygon* polygon = Vorn::Alloc_VornTreatmentPolygon();
  VornTreatmentGrid* grid = Vorn::Alloc_VornTreatmentGrid();
  VornTreatmentGridEx* rateGrid = Vorn::Alloc_VornTreatmentGridEx();
  VornTreatmentMap* map = Vorn::Alloc_VornTreatmentMap();
  ASSERT_TRUE(zone && cell && polygon && grid && rateGrid && map);

  zone->SetDesignator(W(u"North"));
  zone->SetUnitName(W(u"kg/ha"));
  ASSERT_TRUE(grid->InitGrid(0, 0, 1, 1, 2, 2));
  grid->Zones.Add(*zone);
  ASSERT_TRUE(rateGrid->InitGrid(0, 0, 1, 1, 2, 2));
  rateGrid->SetZoneInfo(1, 1, 12.5, 4);
  map->TreatmentPolygons.Add(*polygon);
  VornTreatmentZoneCollection zones;
  zones.Add(1, 100.0);

  VornObjectCollection objects;
  objects.Add(*grid);
  objects.Add(*rateGrid);
  objects.Add(*map);
  objects.Transform(Shift, nullptr);
  EXPECT_EQ(objects[2].GetType(), TreatmentMap);

  Vorn::Free_VornTreatmentZone(zone);
  Vorn::Free_VornTreatmentZoneEx(cell);
  Vorn::Free_VornTreatmentPolygon(polygon);
  Vorn::Free_VornTreatmentGrid(grid);
  Vorn::Free_VornTreatmentGridEx(rateGrid);
  Vorn::Free_VornTreatmentMap(map);
}

}  // namespace
