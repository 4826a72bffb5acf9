#pragma once

#include <fmt/format.h>

#include <string>

namespace quillon {

/// A payroll register as offices print it: pages, departments, names of columns in two lines, totals, a memo line under
/// some rows. Three departments with three people each; one to a page.
inline std::string Payroll() {
  std::string sText;
  int nNumber = 101;
  const char* const kDepartments[] = {"SALES", "SHIPPING AND RECEIVING", "SECURITY"};
  for (int nPage = 1; nPage <= 3; ++nPage) {
    sText += fmt::format("{}ACME WORKS                    PAYROLL REGISTER               PAGE {:3}\n",
                         nPage > 1 ? "\f" : "", nPage);
    sText += fmt::format("\nDEPARTMENT NUMBER: {}  {}\n\n", nPage * 10, kDepartments[nPage - 1]);
    sText += "     EMPL.                              GROSS        TAX          NET\n";
    sText += "     NO.   NAME                           PAY                     PAY\n";
    sText += "     ----  --------------------  ------------  ---------  -----------\n";
    for (const char* const pName : {"MILLER, ANNA", "O'NEILL, TOM", "VAN DER BERG, J."}) {
      const int nGross = 3000 + nNumber;
      sText += fmt::format("     {}   {:20} {:9},{:03}.00 {:10}.50  {:9}.50\n", nNumber, pName, nGross / 1000,
                           nGross % 1000, nNumber, nGross - nNumber - 1);
      if (nNumber % 2 == 0) sText += fmt::format("           MEMO: badge {}\n", nNumber * 7);
      ++nNumber;
    }
    sText += "                                 ------------  ---------  -----------\n";
    sText += fmt::format("     DEPARTMENT TOTALS           {:12}.00 {:9}.50  {:10}.50\n\n", 9000 + 3 * nNumber - 6,
                         3 * nNumber - 5, nPage == 3 ? 8990 : 8998);
  }
  return sText;
}

}  // namespace quillon
