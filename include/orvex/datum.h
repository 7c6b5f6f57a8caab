// Geodetic datums: the catalogue of 253, conversion between any two through WGS 84, and custom datums in an INI file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <orvex/accuracy.h>
#include <orvex/ellipsoid.h>
#include <orvex/export.h>

namespace orvex {

/// How one step between a datum and WGS 84 is computed.
enum DatumMethod : std::int32_t {
  DM_NOXFORM = 0,     ///< no change
  DM_NADCON = 1,      ///< NADCON grids, NAD 27 to NAD 83; from the datum only
  DM_BURSA = 2,       ///< seven-parameter Bursa-Wolf, position-vector rotations
  DM_MOLODENSKY = 3,  ///< three-parameter Molodensky, standard form
  DM_HARN = 4,        ///< reserved; no datum uses it and it is refused
  DM_MRE = 5,         ///< multiple regression equations; from the datum only
  DM_NTV2 = 6         ///< NTv2 grid "NTV2_0.GSB"
};

/// The built-in datums, in the order of their numbers; 0 is user-defined. Numbers from 254 belong to custom datums.
enum DatumType : std::int32_t {
  DT_USER_DEFINED = 0,
  DT_NORTH_AMERICAN_DATUM_1983 = 1,
  DT_NORTH_AMERICAN_DATUM_1927 = 2,
  DT_WORLD_GEODETIC_SYSTEM_1984 = 3,
  DT_WORLD_GEODETIC_SYSTEM_1972 = 4,
  DT_EUROPEAN_1950_MEAN = 5,
  DT_SOUTH_AMERICAN_1969 = 6,
  DT_TOKYO = 7,
  DT_ADINDAN_MEAN = 8,
  DT_ADINDAN_BURKINA_FASO = 9,
  DT_ADINDAN_CAMEROON = 10,
  DT_ADINDAN_ETHIOPIA = 11,
  DT_ADINDAN_MALI = 12,
  DT_ADINDAN_SENEGAL = 13,
  DT_ADINDAN_SUDAN = 14,
  DT_AFGOOYE_SOMALIA = 15,
  DT_AIN_EL_ABD_BAHRAIN_ISLAND = 16,
  DT_AIN_EL_ABD_SAUDI_ARABIA = 17,
  DT_ANNA_1_ASTRO_1965 = 18,
  DT_AMERICAN_SAMOA_ISLANDS_1962 = 19,
  DT_ANTIGUA_ISLAND_ASTRO_1943 = 20,
  DT_ARC_1950_MEAN = 21,
  DT_ARC_1950_BOTSWANA = 22,
  DT_ARC_1950_BURUNDI = 23,
  DT_ARC_1950_LESOTHO = 24,
  DT_ARC_1950_MALAWI = 25,
  DT_ARC_1950_SWAZILAND = 26,
  DT_ARC_1950_ZAIRE = 27,
  DT_ARC_1950_ZAMBIA = 28,
  DT_ARC_1950_ZIMBABWE = 29,
  DT_ARC_1960_MEAN = 30,
  DT_ASCENSION_ISLAND_1958 = 31,
  DT_ASTRO_BEACON_E_1945 = 32,
  DT_ASTRO_B4_SOROL_ATOLL = 33,
  DT_ASTRO_DOS_71_4 = 34,
  DT_ASTRO_TERN_ISLAND_1961 = 35,
  DT_ASTRONOMIC_STATION_1952 = 36,
  DT_AUSTRALIAN_GEODETIC_1966 = 37,
  DT_AUSTRALIAN_GEODETIC_1984 = 38,
  DT_AYABELLE_LIGHTHOUSE = 39,
  DT_BELGIUM = 40,
  DT_BELLEVUE = 41,
  DT_BERMUDA_1957 = 42,
  DT_BISSAU = 43,
  DT_BOGOTA_OBSERVATORY = 44,
  DT_BUKIT_RIMPAH_BANGKA_AND_BELITUNG_IS = 45,
  DT_CAMP_AREA_ASTRO_ANTARCTICA = 46,
  DT_CAMPO_INCHAUSEPE_ARGENTINA = 47,
  DT_CANTON_ASTRO_1966 = 48,
  DT_CAPE = 49,
  DT_CAPE_CANAVERAL = 50,
  DT_CARTHAGE_TUNISIA = 51,
  DT_CHATHAM_1971 = 52,
  DT_CHUA_ASTRO = 53,
  DT_CORREGO_ALEGRE_BRAZIL = 54,
  DT_CZECHOSLOVAKIA_BEFORE_1993 = 55,
  DT_DABOLA = 56,
  DT_DECEPTION_ISLAND_ANTARCTICA = 57,
  DT_DJAKARTA_SUMATRA = 58,
  DT_DLX_PORTUGAL = 59,
  DT_D73_PORTUGAL = 60,
  DT_DOS_1968 = 61,
  DT_EASTER_ISLAND_1967 = 62,
  DT_FAHUD = 63,
  DT_EUROPEAN_1950_W_EUROPE = 64,
  DT_EUROPEAN_1950_UK_IRELAND = 65,
  DT_EUROPEAN_1950_UK_ONLY = 66,
  DT_EUROPEAN_1950_CYPRUS = 67,
  DT_EUROPEAN_1950_EGYPT = 68,
  DT_EUROPEAN_1950_IRAQ_ISRAEL_JORDAN_ETC = 69,
  DT_EUROPEAN_1950_IRAN = 70,
  DT_EUROPEAN_1950_GREECE = 71,
  DT_EUROPEAN_1950_SARDINIA = 72,
  DT_EUROPEAN_1950_SICILY = 73,
  DT_EUROPEAN_1950_MALTA = 74,
  DT_EUROPEAN_1950_NORWAY_FINLAND = 75,
  DT_EUROPEAN_1950_PORT_SPAIN = 76,
  DT_EUR_1979_MEAN = 77,
  DT_EUROPEAN_1950_TUNISIA = 78,
  DT_FORT_THOMAS_1955 = 79,
  DT_GANDAJIKA_1970 = 80,
  DT_GEODETIC_DATUM_1949_NEW_ZEALAND = 81,
  DT_GRACIOSA_BASE_SW_1948 = 82,
  DT_GUAM_1963 = 83,
  DT_GUX_1_ASTRO = 84,
  DT_GUNUNG_SEGARA_KALIMANTAN_INDONESIA = 85,
  DT_HERAT_NORTH_AFGHANISTAN = 86,
  DT_HJORSEY_1955_ICELAND = 87,
  DT_HONG_KONG_1963 = 88,
  DT_HU_TZU_SHAN = 89,
  DT_INDIAN_PAKISTAN = 90,
  DT_INDIAN_BANGLADESH = 91,
  DT_INDIAN_INDIA_NEPAL = 92,
  DT_INDIAN_1954 = 93,
  DT_INDIAN_1954_THAILAND = 94,
  DT_INDIAN_1960_VIETNAM = 95,
  DT_INDIAN_1960_CON_SON_ISLAND = 96,
  DT_INDIAN_1975_THAILAND = 97,
  DT_INDONESIAN_1974 = 98,
  DT_IRELAND_1965 = 99,
  DT_ISTS_061_ASTRO_1968 = 100,
  DT_ISTS_073_ASTRO_1969 = 101,
  DT_JOHNSTON_ISLAND_1961 = 102,
  DT_KANDAWALA_SRI_LANKA = 103,
  DT_KERGUELEN_ISLAND_1949 = 104,
  DT_KERTAU_1948_WEST_MALAYSIA_AND_SINGAPORE = 105,
  DT_KUSAIE_ASTRO_1951 = 106,
  DT_LC_5_ASTRO_1961 = 107,
  DT_LEIGON = 108,
  DT_LIBERIA_1964 = 109,
  DT_LUZON_PHILIPPINES_EXCEPT_MINDANAO_ISLAND = 110,
  DT_LUZON_MINDANAO_ISLAND = 111,
  DT_MAHE_1971 = 112,
  DT_MARCO_ASTRO = 113,
  DT_MASSAWA_ERITREA = 114,
  DT_MERCHICH_MOROCCO = 115,
  DT_MIDWAY_ASTRO_1961 = 116,
  DT_MINNA_NIGERIA = 117,
  DT_MINNA_CAMEROON = 118,
  DT_MONTSERRAT_ISLAND_ASTRO_1958 = 119,
  DT_NAHRWAN_MASIRAH_ISLAND = 120,
  DT_NAHRWAN_U_ARAB_EMER = 121,
  DT_NAHRWAN_SAUDI_ARABIA = 122,
  DT_NAPARIMA_BWI = 123,
  DT_NAD_1927_CONUS = 124,
  DT_NAD_1927_WESTERN_US = 125,
  DT_NAD_1927_EASTERN_US = 126,
  DT_NAD_1927_ALASKA = 127,
  DT_NAD_1927_EAST_OF_180W_ALEUTIANS = 128,
  DT_NAD_1927_WEST_OF_180W_ALEUTIANS = 129,
  DT_NAD_1927_ALEUTIAN_ISLANDS = 130,
  DT_NAD_1927_BAHAMAS = 131,
  DT_NAD_1927_CANADA_MEAN = 132,
  DT_NAD_1927_CANADA_ALB_BC = 133,
  DT_NAD_1927_CANADA_EASTERN = 134,
  DT_NAD_1927_CANADA_MAN_ONT = 135,
  DT_NAD_1927_CANADA_NW_SAS = 136,
  DT_NAD_1927_CANADA_YUKON = 137,
  DT_NAD_1927_CANAL_ZONE = 138,
  DT_NAD_1927_CARIBBEAN = 139,
  DT_NAD_1927_CENTRAL_AMERICA = 140,
  DT_NAD_1927_CUBA = 141,
  DT_NAD_1927_GREENLAND = 142,
  DT_NAD_1927_HAWAII = 143,
  DT_NAD_1927_MEXICO = 144,
  DT_NAD_1927_SAN_SALVADOR_ISLAND = 145,
  DT_NETHERLANDS = 146,
  DT_NTF_FRANCE_PARIS_MERIDIAN = 147,
  DT_NTF_FRANCE_GREENWICH_MERIDIAN = 148,
  DT_OBSERVATORIO_1939 = 149,
  DT_OLD_EGYPTIAN_1907_EGYPT = 150,
  DT_OLD_HAWAIIAN_MEAN = 151,
  DT_OLD_HAWAIIAN_HAWAII = 152,
  DT_OLD_HAWAIIAN_KAUAI = 153,
  DT_OLD_HAWAIIAN_MAUI = 154,
  DT_OLD_HAWAIIAN_OAHU = 155,
  DT_OMAN = 156,
  DT_ORD_SURV_OF_GR_BR_1936 = 157,
  DT_ORD_SURV_1936_SCOTLAND_SHETLAND = 158,
  DT_ORD_SURV_1936_WALES = 159,
  DT_PICO_DE_LAS_NIEVES = 160,
  DT_PITCAIRN_ASTRO_1967 = 161,
  DT_PORTO_SANTO_1936 = 162,
  DT_POINT_58 = 163,
  DT_POINTE_NOIRE_1948 = 164,
  DT_PROV_SA_1956_MEAN = 165,
  DT_PROV_SA_1956_BOLIVIA = 166,
  DT_PROV_SA_1956_N_CHILE = 167,
  DT_PROV_SA_1956_S_CHILE = 168,
  DT_PROV_SA_1956_COLOMBIA = 169,
  DT_PROV_SA_1956_ECUADOR = 170,
  DT_PROV_SA_1956_GUYANA = 171,
  DT_PROV_SA_1956_PERU = 172,
  DT_PROV_SA_1956_VENEZ = 173,
  DT_PROV_SO_CHILEAN_1963 = 174,
  DT_PUERTO_RICO = 175,
  DT_PULKOVO_1942_RUSSIA = 176,
  DT_QATAR_NATIONAL = 177,
  DT_QORNOQ = 178,
  DT_REUNION = 179,
  DT_ROME_1940 = 180,
  DT_SANTO_DOS_1965 = 181,
  DT_SAO_BRAZ = 182,
  DT_SAPPER_HILL_1943 = 183,
  DT_SCHWARZECK = 184,
  DT_SELVAGEM_GRANDE_1938 = 185,
  DT_SO_AMER_1969_MEAN = 186,
  DT_SO_AMER_1969_ARGENTINA = 187,
  DT_SO_AMER_1969_BOLIVIA = 188,
  DT_SO_AMER_1969_BRAZIL = 189,
  DT_SO_AMER_1969_CHILE = 190,
  DT_SO_AMER_1969_COLOMBIA = 191,
  DT_SO_AMER_1969_ECUADOR = 192,
  DT_SO_AMER_1969_BALTRA = 193,
  DT_SO_AMER_1969_GUYANA = 194,
  DT_SO_AMER_1969_PARAGUAY = 195,
  DT_SO_AMER_1969_PERU = 196,
  DT_SO_AMER_1969_TRINIDAD = 197,
  DT_SO_AMER_1969_VENEZUELA = 198,
  DT_SOUTH_ASIA = 199,
  DT_SOUTHEAST_BASE = 200,
  DT_SOUTHWEST_BASE_AZORES = 201,
  DT_TANANARIVE_OBSERVATORY_1925_MADAGASCAR = 202,
  DT_TIMBALAI_1948_BRUNEI = 203,
  DT_TOKYO_MEAN = 204,
  DT_TOKYO_JAPAN = 205,
  DT_TOKYO_KOREA = 206,
  DT_TOKYO_OKINAWA = 207,
  DT_TOKYO_SOUTH_KOREA = 208,
  DT_TRISTAN_ASTRO_1968 = 209,
  DT_VITI_LEVU_1916 = 210,
  DT_WAKE_ENIWETOK_1960 = 211,
  DT_WAKE_ISLAND_ASTRO_1952 = 212,
  DT_YACARE_URUGUAY = 213,
  DT_ZANDERIJ_SURINAME = 214,
  DT_WORLD_GEODETIC_SYSTEM_1972_BURSA_WOLF = 215,
  DT_DHDN_1_BURSA_WOLF = 216,
  DT_DHDN_BURSA_WOLF = 217,
  DT_AUSTRALIAN_GEODETIC_1984_BURSA_WOLF = 218,
  DT_ANS84_BURSA_WOLF = 219,
  DT_MRT_EVEREST_MODIFIED_BURSA_WOLF = 220,
  DT_SWITZERLAND_CH1903_BURSA_WOLF = 221,
  DT_NTF_FRANCE_PARIS_MERIDIAN_BURSA_WOLF = 222,
  DT_PULKOVO_1942_BURSA_WOLF = 223,
  DT_AUSTRALIAN_GEODETIC_1966_MRE = 224,
  DT_AUSTRALIAN_GEODETIC_1984_MRE = 225,
  DT_CAMPO_INCHAUSEPE_ARGENTINA_MRE = 226,
  DT_CORREGO_ALEGRE_BRAZIL_MRE = 227,
  DT_EUROPEAN_1950_MRE = 228,
  DT_NAD_1927_CONUS_MRE = 229,
  DT_NAD_1927_CANADA_MRE = 230,
  DT_SOUTH_AMERICAN_1969_MRE = 231,
  DT_NAD_1927_CONUS_NADCON = 232,
  DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON = 233,
  DT_KRASSOVSKI_1940_ESTONIA_BURSA_WOLF = 234,
  DT_EUREF_89_GRS_80_BURSA_WOLF = 235,
  DT_PULKOVO_1942_HUNGARY_BURSA_WOLF = 236,
  DT_ITRF_90_BURSA_WOLF = 237,
  DT_AUSTRALIAN_GDA_94_1992_BURSA_WOLF = 238,
  DT_AUSTRALIAN_GDA_94_1994_BURSA_WOLF = 239,
  DT_AUSTRALIAN_GDA_94_1996_BURSA_WOLF = 240,
  DT_AUSTRALIAN_GDA_94_1998_BURSA_WOLF = 241,
  DT_AUSTRALIAN_GDA_94_2000_BURSA_WOLF = 242,
  DT_AUSTRALIAN_GDA_94_2002_BURSA_WOLF = 243,
  DT_S_42_HUNGARY = 244,
  DT_S_42_POLAND = 245,
  DT_S_42_CZECHOSLOVAKIA = 246,
  DT_S_42_LATVIA = 247,
  DT_S_42_KAZAKHSTAN = 248,
  DT_S_42_ALBANIA = 249,
  DT_S_42_ROMANIA = 250,
  DT_OCOTEPEQUE_NO_BARICENTRICO_1990_COSTA_RICA_BURSA_WOLF = 251,
  DT_NGO_1948 = 252,
  DT_NAD_1927_CANADA_NTV2 = 253,
  DT_COUNT = 254  ///< number of values, never a datum
};

#pragma pack(push, 1)

/// One step between a datum and WGS 84: byte-packed, 153 bytes.
struct DATUM2WGS84 {
  DatumMethod Method;         ///< how the step is computed
  bool bInverse;              ///< false: datum to WGS 84; true: WGS 84 to datum
  EllipsoidType Ellipsoid;    ///< the datum's ellipsoid; 0: MajorRadius and Flattening as given
  double PMShift;             ///< prime meridian, degrees east of Greenwich
  double dx, dy, dz;          ///< origin shift, metres
  double rx, ry, rz;          ///< rotations, arcseconds (Bursa-Wolf)
  double k;                   ///< scale correction, parts per million (Bursa-Wolf)
  double MajorRadius;         ///< semi-major axis, metres
  double Flattening;          ///< flattening f (not 1/f)
  std::uint8_t Reserved[64];  ///< set to zero
};

/// A conversion from one datum to another: byte-packed, 379 bytes.
struct DATUMXFORM {
  DatumType SrcDatum;          ///< source; 0: described by Step1
  DatumType DestDatum;         ///< destination; 0: described by Step2
  std::uint8_t Reserved1;      ///< not interpreted
  DATUM2WGS84 Step1;           ///< used as given when SrcDatum is 0
  DATUM2WGS84 Step2;           ///< used as given, bInverse included, when DestDatum is 0
  bool bUnplottable;           ///< set when the last conversion met an unplottable point
  std::uint8_t Reserved2[63];  ///< not interpreted
};

/// One point: longitude and latitude in decimal degrees; DBL_MAX in both when unplottable.
struct DATUMPOINT {
  double x, y;
};

#pragma pack(pop)

static_assert(sizeof(DATUM2WGS84) == 153 && sizeof(DATUMXFORM) == 379 && sizeof(DATUMPOINT) == 16);
static_assert(offsetof(DATUM2WGS84, PMShift) == 9 && offsetof(DATUM2WGS84, MajorRadius) == 73);
static_assert(offsetof(DATUMXFORM, Step1) == 9 && offsetof(DATUMXFORM, bUnplottable) == 315);

// ---- catalogue of built-in datums ----

/// Number of datum values: 254 (user-defined and 253 built in).
ORVEX_API int ORVEX_CALL DatNumDatums();
/// Name of a datum; "" when there is none. `name` needs room for 58 characters.
ORVEX_API void ORVEX_CALL DatGetDatumName(DatumType datum, char* name);
/// Finds a datum by its whole name without regard to ASCII case; "User Defined" is datum 0. Not found or null: false,
/// *datum untouched.
ORVEX_API bool ORVEX_CALL DatGetDatumFromName(DatumType* datum, const char* name);
/// POSC (EPSG) code of a datum; false when it has none. `posc` may be null.
ORVEX_API bool ORVEX_CALL DatGetDatumPOSCNumber(DatumType datum, int* posc);
/// First datum of the table with a POSC code; several share one. False for code 0, an unknown code or a null pointer.
ORVEX_API bool ORVEX_CALL DatGetDatumFromPOSCNumber(DatumType* datum, int posc);
/// Method of a built-in datum; false for datum 0 and unknown numbers.
ORVEX_API bool ORVEX_CALL DatGetDatumMethod(DatumType datum, DatumMethod* method);
/// Whether the datum is converted to by its own parameters: true for the methods "no change", Bursa-Wolf and Molodensky
/// only. False for the NTv2 datum as well, which nevertheless may be a destination (its grid is inverted by iteration).
ORVEX_API bool ORVEX_CALL DatReversible(DatumType datum);
/// Parameters of a built-in datum. False for NADCON and regression datums, datum 0 and unknown numbers. The reserved
/// bytes are left as they were.
ORVEX_API bool ORVEX_CALL DatGetDatumParams(DatumType datum, DATUM2WGS84* params);

// ---- conversion ----

/// Checks a conversion record.
///   text    null, or room for 256 characters: receives the message of the failed check, else ""
///   bThrow  throw shr::Exception instead of returning a code
/// Returns 0, or 998 for a null record (never thrown), 1 or 2 for a bad source or destination datum, 3 to 14 for a bad
/// Step1, 15 to 26 (the same checks plus 12) for a bad Step2; see docs/datums.md.
ORVEX_API int ORVEX_CALL DatCheckParams(const DATUMXFORM* xform, char* text, bool bThrow);
/// Makes a datum handle: a copy of the record. Null for a null record and when there is no memory for the handle.
/// Throws shr::Exception for a record that fails DatCheckParams. Free it with DatDeleteDatum.
ORVEX_API void* ORVEX_CALL DatCreateDatum(const DATUMXFORM* xform);
/// Frees a handle; null is ignored.
ORVEX_API void ORVEX_CALL DatDeleteDatum(void* handle);
/// Converts n points in place from the source to the destination datum through WGS 84.
/// Equal built-in datums leave the points as they are, bit for bit. Longitudes come back reduced modulo 360 keeping
/// their sign, latitudes folded at the poles. A point that cannot be computed becomes DBL_MAX in both fields; where one
/// field alone holds it on entry it stays, and the other is normalised; DatSetAccuracy has what is otherwise for
/// handles that compute exactly. False for a null handle or when a step failed. Throws shr::Exception: 20200 for null
/// points, n below 1 or missing NADCON grids, 20280 and 20281 for a missing or corrupt NTv2 grid. All that can fail
/// does so before a point is touched, but for memory for a part of a NADCON grid (20201), which leaves the rest of the
/// points as given. One handle must not be used by two threads at once.
ORVEX_API bool ORVEX_CALL DatConvertDatum(void* handle, DATUMPOINT* pts, int n);
/// The same for n points in columns, with the same bits. Results may go into columns of their own or into the given
/// ones, but else must not overlap them. No column may be null.
ORVEX_API bool ORVEX_CALL DatConvertColumns(void* handle, const double* fromLon, const double* fromLat, double* toLon,
                                            double* toLat, int n);
/// Copies the handle's record; false for null pointers.
ORVEX_API bool ORVEX_CALL DatGetHandleInfo(void* handle, DATUMXFORM* out);
/// Whether the last conversion met an unplottable point; false for a null handle.
ORVEX_API bool ORVEX_CALL DatHadUnplottables(void* handle);

/// Chooses how a handle computes; a new one computes as stated. The choice is the handle's, not the record's. Returns
/// whether it was taken: false, and the handle computes as before, for a null handle, an unknown value, parameters with
/// which a step has no exact form (a scale of 0, numbers that are not finite), and without memory to remember it.
/// Exactly computed, the way back is the inverse of the way there, latitudes are geodetic to rounding, latitudes beyond
/// a pole are unplottable, and a point outside the grids passes unshifted and is told by DatHadUnplottables.
/// docs/accuracy.md has the differences, method by method.
ORVEX_API bool ORVEX_CALL DatSetAccuracy(void* handle, ProjAccuracy accuracy);
/// How a handle computes; PA_STATED for a null handle.
ORVEX_API ProjAccuracy ORVEX_CALL DatGetAccuracy(void* handle);

/// Owns at most one datum handle. Copying makes a handle of its own; assignment shares the handle, which lives until
/// the last object that shares it lets go.
class ORVEX_API CDatumTransform {
 public:
  CDatumTransform();
  CDatumTransform(const DATUMXFORM* xform);
  CDatumTransform(const CDatumTransform& other);
  CDatumTransform& operator=(const CDatumTransform& other);
  virtual ~CDatumTransform();

  /// Releases the present handle and makes a new one; true when there is one now. Empty when it throws.
  bool Create(const DATUMXFORM* xform);
  void Delete();
  bool IsCreated() const;
  bool Convert(DATUMPOINT* pts, int n);
  bool ConvertColumns(const double* fromLon, const double* fromLat, double* toLon, double* toLat, int n);
  bool GetInfo(DATUMXFORM* out) const;
  bool HadUnplottables() const;
  /// DatSetAccuracy and DatGetAccuracy; a copy computes like the object that it is made from, Create starts anew.
  bool SetAccuracy(ProjAccuracy accuracy);
  ProjAccuracy Accuracy() const;

 private:
  std::shared_ptr<void> m_hDatum;
};

// ---- built-in and custom datums as one list, by name ----
// `ini` is the path of the host's INI file, section "Custom Datums"; null means built-in datums only. Nothing throws:
// every failure is a false. Names are compared without regard to case; built-in names take precedence.

/// 254 plus the number of custom datums.
ORVEX_API int ORVEX_CALL NDatNumDatums(const char* ini);
/// Name at an index: 0 to 253 as DatGetDatumName, from 254 the custom datums in file order. `name` needs 260
/// characters.
ORVEX_API bool ORVEX_CALL NDatEnumDatumName(const char* ini, char* name, int index);
/// Whether the name is known; *index (may be null) receives its place in the list.
ORVEX_API bool ORVEX_CALL NDatExists(const char* ini, const char* name, int* index);
/// Whether the name is a built-in one; *datum (may be null) receives its number. The file is not read.
ORVEX_API bool ORVEX_CALL NDatIsBuiltIn(const char* ini, const char* name, DatumType* datum);
/// Parameters of a datum.
ORVEX_API bool ORVEX_CALL NDatGetDatumParams(const char* ini, const char* name, DATUM2WGS84* params);
/// Method of a datum.
ORVEX_API bool ORVEX_CALL NDatGetDatumMethod(const char* ini, const char* name, DatumMethod* method);
/// As DatReversible for a built-in name; of custom datums, true for those whose parameters can be read.
ORVEX_API bool ORVEX_CALL NDatReversible(const char* ini, const char* name);
/// Stores a custom datum, replacing one of the same name in its place. False for a built-in name, a method or ellipsoid
/// that has no text form, or when the file cannot be read or written; it is then as it was.
ORVEX_API bool ORVEX_CALL NDatSave(const char* ini, const char* name, const DATUM2WGS84* params);
/// Removes a custom datum; false as NDatSave. The last one cannot be removed: the call succeeds and the entry stays.
ORVEX_API bool ORVEX_CALL NDatDelete(const char* ini, const char* name);

}  // namespace orvex
