/// \file
/// Preclipping: cutting latitude/longitude shapes to what a projection can show.
#pragma once

#include <orvex/export.h>
#include <orvex/projection.h>

namespace orvex {

/// \addtogroup clip
/// \{

#pragma pack(push, 1)
/// One line segment with a flag for each end, byte-packed.
struct SEGMENT {
  PROJPOINT Start;  ///< where it begins
  PROJPOINT End;    ///< where it ends
  bool bStart;      ///< flag of the beginning
  bool bEnd;        ///< flag of the end
};
#pragma pack(pop)
static_assert(sizeof(SEGMENT) == 34);

/// A growable list of segments with value semantics. Running out of memory throws shr::Exception with id 20201.
/// Operations accept references to the list's own entries.
class ORVEX_API CSEGLIST {
 public:
  CSEGLIST();                                  ///< empty
  CSEGLIST(const CSEGLIST& other);             ///< deep copy, with room for exactly the other's entries
  ~CSEGLIST();                                 ///< frees the block
  CSEGLIST& operator=(const CSEGLIST& other);  ///< deep copy

  bool Append(const SEGMENT& seg);  ///< appends a copy; true
  /// Appends a segment; true.
  bool Append(const PROJPOINT& start, const PROJPOINT& end, bool bStart, bool bEnd);
  /// Appends the nPts - 1 segments that join consecutive points, both flags equal to bFlag; false below 2 points.
  bool AppendMultiple(int nPts, const PROJPOINT* pPts, bool bFlag);
  /// Inserts before `index`, 0 to Count(); false outside.
  bool Insert(int index, const SEGMENT& seg);
  /// Inserts before `index`, 0 to Count(); false outside.
  bool Insert(int index, const PROJPOINT& start, const PROJPOINT& end, bool bStart, bool bEnd);
  /// Removes the entry; false when there is none.
  bool Delete(int index);
  /// Frees the block: back to the default-constructed state.
  void Empty();
  /// Entries in the list.
  int Count() const { return m_count; }
  /// Entries that fit without growing; the list grows by 16 at a time.
  int Capacity() const { return m_capacity; }
  /// The index is not checked. The reference holds until the list changes.
  SEGMENT& operator[](int index) { return m_items[index]; }
  /// The same for a list that is not to change.
  const SEGMENT& operator[](int index) const { return m_items[index]; }

 private:
  SEGMENT* m_items;
  int m_count;
  int m_capacity;
};
/// \file
/// Every function throws shr::Exception 20200 when it needs the domain of a projection that has none (that of
/// "Unprojected Lat/Long") or of a state plane zone that does not exist.

/// Whether a point (degrees) lies in the projection's domain. False for null pointers and outside +-360, +-90 degrees.
ORVEX_API bool ORVEX_CALL ProjLLInProjection(void* hProj, const PROJPOINT* pPt);
/// Whether an object lies wholly outside: true when no point is in the domain (or nPts is below 1), false as soon as
/// one is.
ORVEX_API bool ORVEX_CALL ProjLLInProjection(void* hProj, int nPts, const PROJPOINT* pPts);
/// Whether the object must be drawn a second time, moved by (*pdx, *pdy) degrees, because it reaches over the edge of
/// the map: by (360, 0) or (-360, 0). False for null pointers or nPts 0.
ORVEX_API bool ORVEX_CALL ProjLLOffsetSplitObject(void* hProj, const PROJPOINT* pPts, unsigned int nPts, double* pdx,
                                                  double* pdy);

/// Cuts a polyline to the domain and hands each visible piece to pLine, in degrees, in order; then again moved by the
/// offset of ProjLLOffsetSplitObject when that says so. Cut ends lie inside, within 0.001 degree of the edge. A segment
/// with both ends outside is dropped as a whole: give long segments points on the way. The array given to the callback
/// may be converted in place; pPts is never written. Throws shr::Exception 20205 for null arguments (pUser excepted) or
/// nPts below 2. Returns false when a coordinate is not finite or of no sensible size, or when the callback returns
/// false; pieces already delivered stay delivered.
ORVEX_API bool ORVEX_CALL ProjLLPreclipPolyline(void* hProj, void* pUser, int nPts, const PROJPOINT* pPts,
                                                PROJLINECALLBACK pLine);
/// Cuts a polygon of nParts rings (pCounts[i] points each, one after the other) to the domain. pFill receives the
/// closed rings that are left, all at once for each pass, first point equal to last; it is not called when nothing is
/// left. pLine may be null; else it receives the visible runs of the outline without the pieces that follow the clip
/// edge. Throws 20205 for null arguments (pUser and pLine excepted) or nParts below 1; returns as
/// ProjLLPreclipPolyline, and false as well when a part has fewer than 2 points.
ORVEX_API bool ORVEX_CALL ProjLLPreclipPolygon(void* hProj, void* pUser, int nParts, const int* pCounts,
                                               const PROJPOINT* pPts, PROJFILLCALLBACK pFill, PROJLINECALLBACK pLine);

/// \}

}  // namespace orvex
