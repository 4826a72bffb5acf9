#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "clsReportSample.h"
#include "modColumnParts.h"

namespace quillon {

/// What is known of the rows and of what is printed above them.
struct JoinFacts {
  std::span<const LineMark> names;     ///< Words of the line of names directly above the rows
  std::span<const LineMark> allNames;  ///< Words of all lines of names
  const std::vector<bool>& parting;    ///< Places that hold a bar or the like to part columns
  bool bByMarks = false;               ///< Commas or bars part all columns
  int32_t lEquals = -1;                ///< Place of an equals sign that all rows have: a label stands in front of it
};

/// Puts stretches of places together that are one column though a blank place divides them: words of a text, parts of
/// a date, a sign and its number, thousands parted by blanks, what stands under one name.
class clsColumnJoiner {
 public:
  clsColumnJoiner(const clsReportSample& report, std::span<const size_t> rows, const JoinFacts& facts)
      : report_(report), rows_(rows), facts_(facts) {}

  void Join(std::vector<ColumnPart>& parts) const;

 private:
  void JoinThousands(std::vector<ColumnPart>& parts) const;
  void JoinNamelessTail(std::vector<ColumnPart>& parts) const;
  void JoinAt(std::vector<ColumnPart>& parts, size_t i) const;
  bool AreOne(const ColumnPart& left, const ColumnPart& right) const;
  bool IsOnePiece(const ColumnPart& left, const ColumnPart& right) const;
  bool HaveOneName(const ColumnPart& left, const ColumnPart& right) const;
  bool IsNumberOfText(const ColumnPart& left, const ColumnPart& right) const;
  bool IsPhone(const ColumnPart& left, const ColumnPart& right) const;
  bool HaveOwnNames(const ColumnPart& left, const ColumnPart& right) const;
  bool AreThousands(const ColumnPart& left, const ColumnPart& right) const;
  bool IsSignBehind(const std::vector<ColumnPart>& parts, size_t i) const;
  bool IsParted(const ColumnPart& left, const ColumnPart& right) const;
  bool IsTailOf(const ColumnPart& right, const ColumnPart& left) const;
  bool Alternate(const ColumnPart& left, const ColumnPart& right) const;
  bool IsNamed(const ColumnPart& part) const;
  bool IsNamedBesides(const ColumnPart& part, const ColumnPart& other) const;

  const clsReportSample& report_;
  std::span<const size_t> rows_;
  JoinFacts facts_;
};

}  // namespace quillon
