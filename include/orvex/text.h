/// \file
/// Latitudes and longitudes as degree-minute-second text.
#pragma once

#include <orvex/export.h>

namespace orvex {

/// \addtogroup text
/// \{

/// Bits of the format word of DegreesToLatLon. The low four bits hold the number of decimals (0 to 15) of the last
/// field.
enum LatLonFormat : int {
  LLF_DECIMALS = 0x000F,        ///< mask of the number of decimals
  LLF_DECIMALDEGREES = 0x0010,  ///< one field: decimal degrees, no separator
  LLF_MINUSSIGN = 0x0020,       ///< '-' before a negative value
  LLF_PLUSSIGN = 0x0040,        ///< '+' before a value that is not negative
  LLF_SIGNCOLUMN = 0x0080,      ///< a blank before a value that is not negative; fails together with LLF_PLUSSIGN
  LLF_DECIMALMINUTES = 0x0100,  ///< degrees and decimal minutes; ignored with LLF_DECIMALDEGREES
  LLF_BLANKS = 0x0200,          ///< a blank after the separators between fields and before the hemisphere letter
  LLF_HEMISPHERE = 0x1000,      ///< append the hemisphere letter: E or W
  LLF_LATITUDE = 0x2000,        ///< with LLF_HEMISPHERE: N or S instead
  LLF_ZEROPAD = 0x4000          ///< zero-padded minutes and last field
};

/// Reads an angle: "-85d50'", "30d30'15.5\"", "57", "120d W", "45 N". A minus sign and a hemisphere letter S or W both
/// mean negative and do not cancel. Numbers are plain digits with an optional fraction, whatever the locale.
/// \param text        NUL-terminated text; null: false, nothing written
/// \param degrees     receives decimal degrees. When trailing text makes the call fail it holds the unsigned partial
///                    value.
/// \param degreeChar  a further character accepted as the degree separator besides 'd', in either case; 0 accepts none
/// \returns false when the text holds no number or something is left over.
ORVEX_API bool ORVEX_CALL LatLonToDegrees(const char* text, double* degrees, char degreeChar);

/// Writes an angle as text under a LatLonFormat word.
/// \param text     receives the text; room for at least 260 characters
/// \param degrees  decimal degrees. Rounding is not carried: 10.9999999 gives 60.00 seconds after 59 minutes.
/// \param format   bits of LatLonFormat
/// \param degSep   written after the degrees; 0 writes nothing
/// \param minSep   written after the minutes; 0 writes nothing
/// \param secSep   written after the seconds; 0 writes nothing
/// \returns false for a null text, and for LLF_PLUSSIGN with LLF_SIGNCOLUMN (text is then empty). A negative value
/// written without LLF_MINUSSIGN and without LLF_HEMISPHERE loses its sign.
ORVEX_API bool ORVEX_CALL DegreesToLatLon(char* text, double degrees, int format, char degSep, char minSep,
                                          char secSep);

/// \}

}  // namespace orvex
