#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

#include "addin/base/Steps.h"
#include "addin/config/Conversions.h"
#include "addin/config/IniFiles.h"

/// A record's line and plain keys as a table: one row for each field, in the order in which the fields are filled.
/// Readers and writers use the same rows.
namespace OrvelCalibrateS {

/// Converts the text of a row to the value of its field, and back. `From` fails when the conversion with that name
/// fails.
namespace Convert {

struct PlainText {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::PlainText(text);
  }
  static std::string ToText(const std::string& value) { return value; }
};

struct CleanText {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::CleanText(text);
  }
  static std::string ToText(const std::string& value) { return '"' + value + '"'; }
};

struct TrimmedText {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::TrimmedText(text);
  }
};

struct Flag {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::Flag(text);
  }
  static std::string ToText(bool value) { return value ? "1" : "0"; }
};

struct NegatedFlag {
  template <class Field>
  static Field From(std::string_view text) {
    return !OrvelCalibrateS::Flag(text);
  }
};

struct NumberFlag {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::NumberFlag(text);
  }
};

struct Number {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::Number(text);
  }
  static std::string ToText(double value) { return GeneralForm(value); }
};

struct RoundedNumber {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::RoundedNumber<Field>(text);
  }
  static std::string ToText(std::int32_t value) { return std::to_string(value); }
};

struct StrictReal {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::StrictReal<Field>(text);
  }
};

struct StrictWhole {
  template <class Field>
  static Field From(std::string_view text) {
    return OrvelCalibrateS::StrictWhole<Field>(text);
  }
};

/// Number × factor as a whole number; a half is rounded away from zero.
struct ScaledHalfAway {
  double factor;
  template <class Field>
  Field From(std::string_view text) const {
    return WholeNumberValue(OrvelCalibrateS::Number(text) * factor);
  }
};

/// Number × factor as a whole number; a tie goes to the even neighbour.
struct ScaledTiesToEven {
  double factor;
  template <class Field>
  Field From(std::string_view text) const {
    return Rounded<Field>(OrvelCalibrateS::Number(text) * factor);
  }
};

/// Number / divisor as a whole number; a half is rounded away from zero. Fails on a divisor of 0.
struct DividedHalfAway {
  double divisor;
  template <class Field>
  Field From(std::string_view text) const {
    return WholeNumberValue(Divide(OrvelCalibrateS::Number(text), divisor));
  }
};

}  // namespace Convert

/// A field that is read from a place of the item line.
template <class Record, class Field, class Conversion>
struct PlaceRow {
  std::size_t place;
  Field Record::*field;
  Conversion conversion;
};

/// A field that is read from a plain key of the record's section.
template <class Record, class Field, class Conversion>
struct KeyRow {
  std::string_view key;
  Field Record::*field;
  Conversion conversion;
  std::string_view defaultValue;
};

template <class Record, class Field, class Conversion>
constexpr PlaceRow<Record, Field, Conversion> Place(std::size_t place, Field Record::*field, Conversion conversion) {
  return {place, field, conversion};
}

template <class Record, class Field, class Conversion>
constexpr KeyRow<Record, Field, Conversion> Key(std::string_view key, Field Record::*field, Conversion conversion,
                                                std::string_view defaultValue = "") {
  return {key, field, conversion, defaultValue};
}

/// Fills a record from a split item line, row by row. A missing place or a text that can't be converted affects only
/// that one field, which keeps its value.
template <class Record>
class RowReader {
 public:
  /// Plain keys come from `section` of Marivane.ini, whatever file the line is from.
  RowReader(Record& record, const IniFiles& files, std::string_view section, const SplitResult& line)
      : record_(record), files_(files), section_(section), line_(line) {}

  template <class... Rows>
  void Read(const std::tuple<Rows...>& rows) const {
    std::apply([&](const auto&... row) { (ReadRow(row), ...); }, rows);
  }

 private:
  template <class Owner, class Field, class Conversion>
  void ReadRow(const PlaceRow<Owner, Field, Conversion>& row) const {
    // Lines often end early. A step that can only fail is left out, because a failure takes longer than everything else
    // here.
    if (!line_.Has(row.place)) return;
    Put(record_.*row.field, [&] { return row.conversion.template From<Field>(line_.Place(row.place)); });
  }

  template <class Owner, class Field, class Conversion>
  void ReadRow(const KeyRow<Owner, Field, Conversion>& row) const {
    Put(record_.*row.field, [&] {
      return row.conversion.template From<Field>(
          files_.ReadIni(section_, row.key, files_.MarivaneIni(), row.defaultValue));
    });
  }

  Record& record_;
  const IniFiles& files_;
  std::string_view section_;
  const SplitResult& line_;
};

}  // namespace OrvelCalibrateS
