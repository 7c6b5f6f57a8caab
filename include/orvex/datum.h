/// \file
/// Geodetic datums: the catalogue of 253, conversion between any two through WGS 84, and custom datums in an INI file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <orvex/accuracy.h>
#include <orvex/ellipsoid.h>
#include <orvex/export.h>

namespace orvex {

/// \addtogroup datum
/// \{

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
  DT_USER_DEFINED = 0,                                ///< none of the catalogue: the step in the record describes it
  DT_NORTH_AMERICAN_DATUM_1983 = 1,                   ///< North American Datum 1983
  DT_NORTH_AMERICAN_DATUM_1927 = 2,                   ///< North American Datum 1927
  DT_WORLD_GEODETIC_SYSTEM_1984 = 3,                  ///< World Geodetic System 1984
  DT_WORLD_GEODETIC_SYSTEM_1972 = 4,                  ///< World Geodetic System 1972
  DT_EUROPEAN_1950_MEAN = 5,                          ///< European 1950 - Mean
  DT_SOUTH_AMERICAN_1969 = 6,                         ///< South American 1969
  DT_TOKYO = 7,                                       ///< Tokyo
  DT_ADINDAN_MEAN = 8,                                ///< Adindan - Mean
  DT_ADINDAN_BURKINA_FASO = 9,                        ///< Adindan - Burkina Faso
  DT_ADINDAN_CAMEROON = 10,                           ///< Adindan - Cameroon
  DT_ADINDAN_ETHIOPIA = 11,                           ///< Adindan - Ethiopia
  DT_ADINDAN_MALI = 12,                               ///< Adindan - Mali
  DT_ADINDAN_SENEGAL = 13,                            ///< Adindan - Senegal
  DT_ADINDAN_SUDAN = 14,                              ///< Adindan - Sudan
  DT_AFGOOYE_SOMALIA = 15,                            ///< Afgooye - Somalia
  DT_AIN_EL_ABD_BAHRAIN_ISLAND = 16,                  ///< Ain El Abd - Bahrain Island
  DT_AIN_EL_ABD_SAUDI_ARABIA = 17,                    ///< Ain El Abd - Saudi Arabia
  DT_ANNA_1_ASTRO_1965 = 18,                          ///< Anna 1 Astro 1965
  DT_AMERICAN_SAMOA_ISLANDS_1962 = 19,                ///< American Samoa Islands - 1962
  DT_ANTIGUA_ISLAND_ASTRO_1943 = 20,                  ///< Antigua Island Astro 1943
  DT_ARC_1950_MEAN = 21,                              ///< Arc 1950 - Mean
  DT_ARC_1950_BOTSWANA = 22,                          ///< Arc 1950 - Botswana
  DT_ARC_1950_BURUNDI = 23,                           ///< Arc 1950 - Burundi
  DT_ARC_1950_LESOTHO = 24,                           ///< Arc 1950 - Lesotho
  DT_ARC_1950_MALAWI = 25,                            ///< Arc 1950 - Malawi
  DT_ARC_1950_SWAZILAND = 26,                         ///< Arc 1950 - Swaziland
  DT_ARC_1950_ZAIRE = 27,                             ///< Arc 1950 - Zaire
  DT_ARC_1950_ZAMBIA = 28,                            ///< Arc 1950 - Zambia
  DT_ARC_1950_ZIMBABWE = 29,                          ///< Arc 1950 - Zimbabwe
  DT_ARC_1960_MEAN = 30,                              ///< Arc 1960 - Mean
  DT_ASCENSION_ISLAND_1958 = 31,                      ///< Ascension Island 1958
  DT_ASTRO_BEACON_E_1945 = 32,                        ///< Astro Beacon 'E' 1945
  DT_ASTRO_B4_SOROL_ATOLL = 33,                       ///< Astro B4 Sorol Atoll
  DT_ASTRO_DOS_71_4 = 34,                             ///< Astro Dos 71/4
  DT_ASTRO_TERN_ISLAND_1961 = 35,                     ///< Astro Tern Island 1961
  DT_ASTRONOMIC_STATION_1952 = 36,                    ///< Astronomic Station 1952
  DT_AUSTRALIAN_GEODETIC_1966 = 37,                   ///< Australian Geodetic 1966
  DT_AUSTRALIAN_GEODETIC_1984 = 38,                   ///< Australian Geodetic 1984
  DT_AYABELLE_LIGHTHOUSE = 39,                        ///< Ayabelle Lighthouse
  DT_BELGIUM = 40,                                    ///< Belgium
  DT_BELLEVUE = 41,                                   ///< Bellevue
  DT_BERMUDA_1957 = 42,                               ///< Bermuda 1957
  DT_BISSAU = 43,                                     ///< Bissau
  DT_BOGOTA_OBSERVATORY = 44,                         ///< Bogota Observatory
  DT_BUKIT_RIMPAH_BANGKA_AND_BELITUNG_IS = 45,        ///< Bukit Rimpah - Bangka & Belitung Is.
  DT_CAMP_AREA_ASTRO_ANTARCTICA = 46,                 ///< Camp Area Astro - Antarctica
  DT_CAMPO_INCHAUSEPE_ARGENTINA = 47,                 ///< Campo Inchausepe - Argentina
  DT_CANTON_ASTRO_1966 = 48,                          ///< Canton Astro 1966
  DT_CAPE = 49,                                       ///< Cape
  DT_CAPE_CANAVERAL = 50,                             ///< Cape Canaveral
  DT_CARTHAGE_TUNISIA = 51,                           ///< Carthage - Tunisia
  DT_CHATHAM_1971 = 52,                               ///< Chatham 1971
  DT_CHUA_ASTRO = 53,                                 ///< Chua Astro
  DT_CORREGO_ALEGRE_BRAZIL = 54,                      ///< Corrego Alegre - Brazil
  DT_CZECHOSLOVAKIA_BEFORE_1993 = 55,                 ///< Czechoslovakia - Before 1993
  DT_DABOLA = 56,                                     ///< Dabola
  DT_DECEPTION_ISLAND_ANTARCTICA = 57,                ///< Deception Island - Antarctica
  DT_DJAKARTA_SUMATRA = 58,                           ///< Djakarta - Sumatra
  DT_DLX_PORTUGAL = 59,                               ///< DLx Portugal
  DT_D73_PORTUGAL = 60,                               ///< D73 Portugal
  DT_DOS_1968 = 61,                                   ///< Dos 1968
  DT_EASTER_ISLAND_1967 = 62,                         ///< Easter Island 1967
  DT_FAHUD = 63,                                      ///< Fahud
  DT_EUROPEAN_1950_W_EUROPE = 64,                     ///< European 1950 - W. Europe
  DT_EUROPEAN_1950_UK_IRELAND = 65,                   ///< European 1950 - UK/Ireland
  DT_EUROPEAN_1950_UK_ONLY = 66,                      ///< European 1950 - UK Only
  DT_EUROPEAN_1950_CYPRUS = 67,                       ///< European 1950 - Cyprus
  DT_EUROPEAN_1950_EGYPT = 68,                        ///< European 1950 - Egypt
  DT_EUROPEAN_1950_IRAQ_ISRAEL_JORDAN_ETC = 69,       ///< European 1950 - Iraq Israel Jordan etc.
  DT_EUROPEAN_1950_IRAN = 70,                         ///< European 1950 - Iran
  DT_EUROPEAN_1950_GREECE = 71,                       ///< European 1950 - Greece
  DT_EUROPEAN_1950_SARDINIA = 72,                     ///< European 1950 - Sardinia
  DT_EUROPEAN_1950_SICILY = 73,                       ///< European 1950 - Sicily
  DT_EUROPEAN_1950_MALTA = 74,                        ///< European 1950 - Malta
  DT_EUROPEAN_1950_NORWAY_FINLAND = 75,               ///< European 1950 - Norway/Finland
  DT_EUROPEAN_1950_PORT_SPAIN = 76,                   ///< European 1950 - Port./Spain
  DT_EUR_1979_MEAN = 77,                              ///< Eur. 1979 - Mean
  DT_EUROPEAN_1950_TUNISIA = 78,                      ///< European 1950 - Tunisia
  DT_FORT_THOMAS_1955 = 79,                           ///< Fort Thomas 1955
  DT_GANDAJIKA_1970 = 80,                             ///< Gandajika  1970
  DT_GEODETIC_DATUM_1949_NEW_ZEALAND = 81,            ///< Geodetic Datum 1949 - New Zealand
  DT_GRACIOSA_BASE_SW_1948 = 82,                      ///< Graciosa Base SW 1948
  DT_GUAM_1963 = 83,                                  ///< Guam 1963
  DT_GUX_1_ASTRO = 84,                                ///< Gux 1 Astro
  DT_GUNUNG_SEGARA_KALIMANTAN_INDONESIA = 85,         ///< Gunung Segara - Kalimantan Indonesia
  DT_HERAT_NORTH_AFGHANISTAN = 86,                    ///< Herat North - Afghanistan
  DT_HJORSEY_1955_ICELAND = 87,                       ///< Hjorsey 1955 - Iceland
  DT_HONG_KONG_1963 = 88,                             ///< Hong Kong 1963
  DT_HU_TZU_SHAN = 89,                                ///< Hu-tzu-shan
  DT_INDIAN_PAKISTAN = 90,                            ///< Indian - Pakistan
  DT_INDIAN_BANGLADESH = 91,                          ///< Indian - Bangladesh
  DT_INDIAN_INDIA_NEPAL = 92,                         ///< Indian - India Nepal
  DT_INDIAN_1954 = 93,                                ///< Indian 1954
  DT_INDIAN_1954_THAILAND = 94,                       ///< Indian 1954 Thailand
  DT_INDIAN_1960_VIETNAM = 95,                        ///< Indian 1960 - Vietnam
  DT_INDIAN_1960_CON_SON_ISLAND = 96,                 ///< Indian 1960 - Con Son Island
  DT_INDIAN_1975_THAILAND = 97,                       ///< Indian 1975 - Thailand
  DT_INDONESIAN_1974 = 98,                            ///< Indonesian 1974
  DT_IRELAND_1965 = 99,                               ///< Ireland 1965
  DT_ISTS_061_ASTRO_1968 = 100,                       ///< Ists 061 Astro 1968
  DT_ISTS_073_ASTRO_1969 = 101,                       ///< Ists 073 Astro 1969
  DT_JOHNSTON_ISLAND_1961 = 102,                      ///< Johnston Island 1961
  DT_KANDAWALA_SRI_LANKA = 103,                       ///< Kandawala - Sri Lanka
  DT_KERGUELEN_ISLAND_1949 = 104,                     ///< Kerguelen Island 1949
  DT_KERTAU_1948_WEST_MALAYSIA_AND_SINGAPORE = 105,   ///< Kertau 1948 - West Malaysia & Singapore
  DT_KUSAIE_ASTRO_1951 = 106,                         ///< Kusaie Astro 1951
  DT_LC_5_ASTRO_1961 = 107,                           ///< L.C. 5 Astro 1961
  DT_LEIGON = 108,                                    ///< Leigon
  DT_LIBERIA_1964 = 109,                              ///< Liberia 1964
  DT_LUZON_PHILIPPINES_EXCEPT_MINDANAO_ISLAND = 110,  ///< Luzon - Philippines, except Mindanao Island
  DT_LUZON_MINDANAO_ISLAND = 111,                     ///< Luzon - Mindanao Island
  DT_MAHE_1971 = 112,                                 ///< Mahe 1971
  DT_MARCO_ASTRO = 113,                               ///< Marco Astro
  DT_MASSAWA_ERITREA = 114,                           ///< Massawa - Eritrea
  DT_MERCHICH_MOROCCO = 115,                          ///< Merchich - Morocco
  DT_MIDWAY_ASTRO_1961 = 116,                         ///< Midway Astro 1961
  DT_MINNA_NIGERIA = 117,                             ///< Minna - Nigeria
  DT_MINNA_CAMEROON = 118,                            ///< Minna - Cameroon
  DT_MONTSERRAT_ISLAND_ASTRO_1958 = 119,              ///< Montserrat Island Astro 1958
  DT_NAHRWAN_MASIRAH_ISLAND = 120,                    ///< Nahrwan - Masirah Island
  DT_NAHRWAN_U_ARAB_EMER = 121,                       ///< Nahrwan - U. Arab Emer.
  DT_NAHRWAN_SAUDI_ARABIA = 122,                      ///< Nahrwan - Saudi Arabia
  DT_NAPARIMA_BWI = 123,                              ///< Naparima BWI
  DT_NAD_1927_CONUS = 124,                            ///< NAD 1927 - CONUS
  DT_NAD_1927_WESTERN_US = 125,                       ///< NAD 1927 - Western US
  DT_NAD_1927_EASTERN_US = 126,                       ///< NAD 1927 - Eastern US
  DT_NAD_1927_ALASKA = 127,                           ///< NAD 1927 - Alaska
  DT_NAD_1927_EAST_OF_180W_ALEUTIANS = 128,           ///< NAD 1927 - East of 180W - Aleutians
  DT_NAD_1927_WEST_OF_180W_ALEUTIANS = 129,           ///< NAD 1927 - West of 180W - Aleutians
  DT_NAD_1927_ALEUTIAN_ISLANDS = 130,                 ///< NAD 1927 - Aleutian Islands
  DT_NAD_1927_BAHAMAS = 131,                          ///< NAD 1927 - Bahamas
  DT_NAD_1927_CANADA_MEAN = 132,                      ///< NAD 1927 - Canada - Mean
  DT_NAD_1927_CANADA_ALB_BC = 133,                    ///< NAD 1927 - Canada - Alb/BC
  DT_NAD_1927_CANADA_EASTERN = 134,                   ///< NAD 1927 - Canada - Eastern
  DT_NAD_1927_CANADA_MAN_ONT = 135,                   ///< NAD 1927 - Canada - Man/Ont
  DT_NAD_1927_CANADA_NW_SAS = 136,                    ///< NAD 1927 - Canada - NW/Sas.
  DT_NAD_1927_CANADA_YUKON = 137,                     ///< NAD 1927 - Canada - Yukon
  DT_NAD_1927_CANAL_ZONE = 138,                       ///< NAD 1927 - Canal Zone
  DT_NAD_1927_CARIBBEAN = 139,                        ///< NAD 1927 - Caribbean
  DT_NAD_1927_CENTRAL_AMERICA = 140,                  ///< NAD 1927 - Central America
  DT_NAD_1927_CUBA = 141,                             ///< NAD 1927 - Cuba
  DT_NAD_1927_GREENLAND = 142,                        ///< NAD 1927 - Greenland
  DT_NAD_1927_HAWAII = 143,                           ///< NAD 1927 - Hawaii
  DT_NAD_1927_MEXICO = 144,                           ///< NAD 1927 - Mexico
  DT_NAD_1927_SAN_SALVADOR_ISLAND = 145,              ///< NAD 1927 - San Salvador Island
  DT_NETHERLANDS = 146,                               ///< Netherlands
  DT_NTF_FRANCE_PARIS_MERIDIAN = 147,                 ///< NTF France - Paris Meridian
  DT_NTF_FRANCE_GREENWICH_MERIDIAN = 148,             ///< NTF France - Greenwich Meridian
  DT_OBSERVATORIO_1939 = 149,                         ///< Observatorio 1939
  DT_OLD_EGYPTIAN_1907_EGYPT = 150,                   ///< Old Egyptian 1907 - Egypt
  DT_OLD_HAWAIIAN_MEAN = 151,                         ///< Old Hawaiian - Mean
  DT_OLD_HAWAIIAN_HAWAII = 152,                       ///< Old Hawaiian - Hawaii
  DT_OLD_HAWAIIAN_KAUAI = 153,                        ///< Old Hawaiian - Kauai
  DT_OLD_HAWAIIAN_MAUI = 154,                         ///< Old Hawaiian - Maui
  DT_OLD_HAWAIIAN_OAHU = 155,                         ///< Old Hawaiian - Oahu
  DT_OMAN = 156,                                      ///< Oman
  DT_ORD_SURV_OF_GR_BR_1936 = 157,                    ///< Ord. Surv. of Gr. Br. 1936
  DT_ORD_SURV_1936_SCOTLAND_SHETLAND = 158,           ///< Ord. Surv. 1936 - Scotland-Shetland
  DT_ORD_SURV_1936_WALES = 159,                       ///< Ord. Surv. 1936 - Wales
  DT_PICO_DE_LAS_NIEVES = 160,                        ///< Pico De Las Nieves
  DT_PITCAIRN_ASTRO_1967 = 161,                       ///< Pitcairn Astro 1967
  DT_PORTO_SANTO_1936 = 162,                          ///< Porto Santo 1936
  DT_POINT_58 = 163,                                  ///< Point 58
  DT_POINTE_NOIRE_1948 = 164,                         ///< Pointe Noire 1948
  DT_PROV_SA_1956_MEAN = 165,                         ///< Prov. S.A. 1956 - Mean
  DT_PROV_SA_1956_BOLIVIA = 166,                      ///< Prov. S.A. 1956 - Bolivia
  DT_PROV_SA_1956_N_CHILE = 167,                      ///< Prov. S.A. 1956 - N. Chile
  DT_PROV_SA_1956_S_CHILE = 168,                      ///< Prov. S.A. 1956 - S. Chile
  DT_PROV_SA_1956_COLOMBIA = 169,                     ///< Prov. S.A. 1956 - Colombia
  DT_PROV_SA_1956_ECUADOR = 170,                      ///< Prov. S.A. 1956 - Ecuador
  DT_PROV_SA_1956_GUYANA = 171,                       ///< Prov. S.A. 1956 - Guyana
  DT_PROV_SA_1956_PERU = 172,                         ///< Prov. S.A. 1956 - Peru
  DT_PROV_SA_1956_VENEZ = 173,                        ///< Prov. S.A. 1956 - Venez.
  DT_PROV_SO_CHILEAN_1963 = 174,                      ///< Prov. So. Chilean 1963
  DT_PUERTO_RICO = 175,                               ///< Puerto Rico
  DT_PULKOVO_1942_RUSSIA = 176,                       ///< Pulkovo 1942 - Russia
  DT_QATAR_NATIONAL = 177,                            ///< Qatar National
  DT_QORNOQ = 178,                                    ///< Qornoq
  DT_REUNION = 179,                                   ///< Reunion
  DT_ROME_1940 = 180,                                 ///< Rome 1940
  DT_SANTO_DOS_1965 = 181,                            ///< Santo DOS 1965
  DT_SAO_BRAZ = 182,                                  ///< Sao Braz
  DT_SAPPER_HILL_1943 = 183,                          ///< Sapper Hill 1943
  DT_SCHWARZECK = 184,                                ///< Schwarzeck
  DT_SELVAGEM_GRANDE_1938 = 185,                      ///< Selvagem Grande 1938
  DT_SO_AMER_1969_MEAN = 186,                         ///< So. Amer. 1969 - Mean
  DT_SO_AMER_1969_ARGENTINA = 187,                    ///< So. Amer. 1969 - Argentina
  DT_SO_AMER_1969_BOLIVIA = 188,                      ///< So. Amer. 1969 - Bolivia
  DT_SO_AMER_1969_BRAZIL = 189,                       ///< So. Amer. 1969 - Brazil
  DT_SO_AMER_1969_CHILE = 190,                        ///< So. Amer. 1969 - Chile
  DT_SO_AMER_1969_COLOMBIA = 191,                     ///< So. Amer. 1969 - Colombia
  DT_SO_AMER_1969_ECUADOR = 192,                      ///< So. Amer. 1969 - Ecuador
  DT_SO_AMER_1969_BALTRA = 193,                       ///< So. Amer. 1969 - Baltra
  DT_SO_AMER_1969_GUYANA = 194,                       ///< So. Amer. 1969 - Guyana
  DT_SO_AMER_1969_PARAGUAY = 195,                     ///< So. Amer. 1969 - Paraguay
  DT_SO_AMER_1969_PERU = 196,                         ///< So. Amer. 1969 - Peru
  DT_SO_AMER_1969_TRINIDAD = 197,                     ///< So. Amer. 1969 - Trinidad
  DT_SO_AMER_1969_VENEZUELA = 198,                    ///< So. Amer. 1969 - Venezuela
  DT_SOUTH_ASIA = 199,                                ///< South Asia
  DT_SOUTHEAST_BASE = 200,                            ///< Southeast Base
  DT_SOUTHWEST_BASE_AZORES = 201,                     ///< Southwest Base - Azores
  DT_TANANARIVE_OBSERVATORY_1925_MADAGASCAR = 202,    ///< Tananarive Observatory 1925 - Madagascar
  DT_TIMBALAI_1948_BRUNEI = 203,                      ///< Timbalai 1948 - Brunei
  DT_TOKYO_MEAN = 204,                                ///< Tokyo - Mean
  DT_TOKYO_JAPAN = 205,                               ///< Tokyo - Japan
  DT_TOKYO_KOREA = 206,                               ///< Tokyo - Korea
  DT_TOKYO_OKINAWA = 207,                             ///< Tokyo - Okinawa
  DT_TOKYO_SOUTH_KOREA = 208,                         ///< Tokyo - South Korea
  DT_TRISTAN_ASTRO_1968 = 209,                        ///< Tristan Astro 1968
  DT_VITI_LEVU_1916 = 210,                            ///< Viti Levu 1916
  DT_WAKE_ENIWETOK_1960 = 211,                        ///< Wake-Eniwetok 1960
  DT_WAKE_ISLAND_ASTRO_1952 = 212,                    ///< Wake Island Astro 1952
  DT_YACARE_URUGUAY = 213,                            ///< Yacare - Uruguay
  DT_ZANDERIJ_SURINAME = 214,                         ///< Zanderij - Suriname
  DT_WORLD_GEODETIC_SYSTEM_1972_BURSA_WOLF = 215,     ///< World Geodetic System 1972 (Bursa-Wolf)
  DT_DHDN_1_BURSA_WOLF = 216,                         ///< DHDN-1 (Bursa-Wolf)
  DT_DHDN_BURSA_WOLF = 217,                           ///< DHDN (Bursa-Wolf)
  DT_AUSTRALIAN_GEODETIC_1984_BURSA_WOLF = 218,       ///< Australian Geodetic 1984 (Bursa-Wolf)
  DT_ANS84_BURSA_WOLF = 219,                          ///< ANS84 (Bursa-Wolf)
  DT_MRT_EVEREST_MODIFIED_BURSA_WOLF = 220,           ///< MRT - Everest Modified (Bursa-Wolf)
  DT_SWITZERLAND_CH1903_BURSA_WOLF = 221,             ///< Switzerland - CH1903 (Bursa-Wolf)
  DT_NTF_FRANCE_PARIS_MERIDIAN_BURSA_WOLF = 222,      ///< NTF France - Paris Meridian (Bursa-Wolf)
  DT_PULKOVO_1942_BURSA_WOLF = 223,                   ///< Pulkovo 1942 (Bursa-Wolf)
  DT_AUSTRALIAN_GEODETIC_1966_MRE = 224,              ///< Australian Geodetic 1966 (MRE)
  DT_AUSTRALIAN_GEODETIC_1984_MRE = 225,              ///< Australian Geodetic 1984 (MRE)
  DT_CAMPO_INCHAUSEPE_ARGENTINA_MRE = 226,            ///< Campo Inchausepe - Argentina (MRE)
  DT_CORREGO_ALEGRE_BRAZIL_MRE = 227,                 ///< Corrego Alegre - Brazil (MRE)
  DT_EUROPEAN_1950_MRE = 228,                         ///< European 1950 (MRE)
  DT_NAD_1927_CONUS_MRE = 229,                        ///< NAD 1927 - CONUS (MRE)
  DT_NAD_1927_CANADA_MRE = 230,                       ///< NAD 1927 - Canada (MRE)
  DT_SOUTH_AMERICAN_1969_MRE = 231,                   ///< South American 1969 (MRE)
  DT_NAD_1927_CONUS_NADCON = 232,                     ///< NAD 1927 - CONUS (NADCON)
  DT_NAD_1927_PUERTO_RICO_AND_VIRGIN_ISLANDS_NADCON = 233,  ///< NAD 1927 - Puerto Rico & Virgin Islands (NADCON)
  DT_KRASSOVSKI_1940_ESTONIA_BURSA_WOLF = 234,              ///< Krassovski 1940 - Estonia (Bursa-Wolf)
  DT_EUREF_89_GRS_80_BURSA_WOLF = 235,                      ///< EUREF-89/GRS-80 (Bursa-Wolf)
  DT_PULKOVO_1942_HUNGARY_BURSA_WOLF = 236,                 ///< Pulkovo 1942 - Hungary (Bursa-Wolf)
  DT_ITRF_90_BURSA_WOLF = 237,                              ///< ITRF-90 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_1992_BURSA_WOLF = 238,               ///< Australian GDA-94/1992 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_1994_BURSA_WOLF = 239,               ///< Australian GDA-94/1994 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_1996_BURSA_WOLF = 240,               ///< Australian GDA-94/1996 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_1998_BURSA_WOLF = 241,               ///< Australian GDA-94/1998 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_2000_BURSA_WOLF = 242,               ///< Australian GDA-94/2000 (Bursa-Wolf)
  DT_AUSTRALIAN_GDA_94_2002_BURSA_WOLF = 243,               ///< Australian GDA-94/2002 (Bursa-Wolf)
  DT_S_42_HUNGARY = 244,                                    ///< S-42 Hungary
  DT_S_42_POLAND = 245,                                     ///< S-42 Poland
  DT_S_42_CZECHOSLOVAKIA = 246,                             ///< S-42 Czechoslovakia
  DT_S_42_LATVIA = 247,                                     ///< S-42 Latvia
  DT_S_42_KAZAKHSTAN = 248,                                 ///< S-42 Kazakhstan
  DT_S_42_ALBANIA = 249,                                    ///< S-42 Albania
  DT_S_42_ROMANIA = 250,                                    ///< S-42 Romania
  /// Ocotepeque No Baricentrico 1990 - Costa Rica (Bursa-Wolf)
  DT_OCOTEPEQUE_NO_BARICENTRICO_1990_COSTA_RICA_BURSA_WOLF = 251,
  DT_NGO_1948 = 252,              ///< NGO 1948
  DT_NAD_1927_CANADA_NTV2 = 253,  ///< NAD 1927 - Canada (NTV2)
  DT_COUNT = 254                  ///< number of values, never a datum
};

#pragma pack(push, 1)

/// One step between a datum and WGS 84: byte-packed, 153 bytes.
struct DATUM2WGS84 {
  DatumMethod Method;         ///< how the step is computed
  bool bInverse;              ///< false: datum to WGS 84; true: WGS 84 to datum
  EllipsoidType Ellipsoid;    ///< the datum's ellipsoid; 0: MajorRadius and Flattening as given
  double PMShift;             ///< prime meridian, degrees east of Greenwich
  double dx;                  ///< shift of the origin along x, metres
  double dy;                  ///< shift of the origin along y, metres
  double dz;                  ///< shift of the origin along z, metres
  double rx;                  ///< rotation about x, arcseconds (Bursa-Wolf, position vector)
  double ry;                  ///< rotation about y, arcseconds
  double rz;                  ///< rotation about z, arcseconds
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
  double x;  ///< longitude, degrees, east positive
  double y;  ///< geodetic latitude, degrees, north positive
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
/// \param xform   the record
/// \param text    null, or room for 256 characters: receives the message of the failed check, else ""
/// \param bThrow  throw shr::Exception instead of returning a code
/// \returns 0, or 998 for a null record (never thrown), 1 or 2 for a bad source or destination datum, 3 to 14 for a bad
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
/// points, n below 1 or missing NADCON grids, 20280 and 20281 for a missing or corrupt NTv2 grid. What fails
/// leaves all points as they were given, also where a part of a NADCON grid cannot be read (20203) or has no memory
/// (20201) on the way. One handle must not be used by two threads at once.
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
  CDatumTransform();                                         ///< without a handle
  CDatumTransform(const DATUMXFORM* xform);                  ///< as DatCreateDatum; throws for a bad record
  CDatumTransform(const CDatumTransform& other);             ///< a handle of its own, with the same record
  CDatumTransform& operator=(const CDatumTransform& other);  ///< shares the other's handle
  virtual ~CDatumTransform();                                ///< lets go of the handle

  /// Releases the present handle and makes a new one; true when there is one now. Empty when it throws.
  bool Create(const DATUMXFORM* xform);
  void Delete();                         ///< lets go of the handle
  bool IsCreated() const;                ///< whether there is a handle
  bool Convert(DATUMPOINT* pts, int n);  ///< DatConvertDatum; false without a handle
  /// DatConvertColumns; false without a handle.
  bool ConvertColumns(const double* fromLon, const double* fromLat, double* toLon, double* toLat, int n);
  bool GetInfo(DATUMXFORM* out) const;  ///< DatGetHandleInfo; false without a handle
  bool HadUnplottables() const;         ///< DatHadUnplottables; false without a handle
  /// DatSetAccuracy; a copy computes like the object that it is made from, Create starts anew.
  bool SetAccuracy(ProjAccuracy accuracy);
  ProjAccuracy Accuracy() const;  ///< DatGetAccuracy; PA_STATED without a handle

 private:
  std::shared_ptr<void> m_hDatum;
};
/// \file
/// Built-in and custom datums as one list, by name, are what the functions `NDat...` know: `ini` is the path of the
/// host's INI file, section "Custom Datums"; null means built-in datums only. Nothing throws: every failure is a false.
/// Names are compared without regard to case; built-in names take precedence.

/// 254 plus the number of custom datums.
ORVEX_API int ORVEX_CALL NDatNumDatums(const char* ini);
/// Name at an index: 0 to 253 as DatGetDatumName, from 254 the custom datums in file order. `name` needs 260
/// characters.
ORVEX_API bool ORVEX_CALL NDatEnumDatumName(const char* ini, char* name, int index);
/// Whether the name is known; *index (may be null) receives its place in the list.
ORVEX_API bool ORVEX_CALL NDatExists(const char* ini, const char* name, int* index);
/// Whether the name is a built-in one; *datum (may be null) receives its number. The file is not read.
ORVEX_API bool ORVEX_CALL NDatIsBuiltIn(const char* ini, const char* name, DatumType* datum);
/// Parameters of a datum by name. False for a name that is not known and where DatGetDatumParams has none.
ORVEX_API bool ORVEX_CALL NDatGetDatumParams(const char* ini, const char* name, DATUM2WGS84* params);
/// Method of a datum by name. False for a name that is not known.
ORVEX_API bool ORVEX_CALL NDatGetDatumMethod(const char* ini, const char* name, DatumMethod* method);
/// As DatReversible for a built-in name; of custom datums, true for those whose parameters can be read.
ORVEX_API bool ORVEX_CALL NDatReversible(const char* ini, const char* name);
/// Stores a custom datum, replacing one of the same name in its place. False for a built-in name, a method or ellipsoid
/// that has no text form, or when the file cannot be read or written; it is then as it was.
ORVEX_API bool ORVEX_CALL NDatSave(const char* ini, const char* name, const DATUM2WGS84* params);
/// Removes a custom datum; false as NDatSave. The last one cannot be removed: the call succeeds and the entry stays.
ORVEX_API bool ORVEX_CALL NDatDelete(const char* ini, const char* name);

/// \}

}  // namespace orvex
