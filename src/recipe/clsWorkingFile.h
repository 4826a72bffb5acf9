#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A file of our own in the data folder that a run makes and reads again: private to the process until it is put to
/// the name by which all know it, so that two runs at once never mix theirs. Removed with the object if it wasn't;
/// what killed runs left of theirs goes after a day.
class clsWorkingFile {
 public:
  clsWorkingFile() = default;
  /// Removes both files, if they are there. Base name and extension (with its point) of the public one.
  clsWorkingFile(std::string_view sBase, std::string_view sExtension);
  clsWorkingFile(clsWorkingFile&& other) noexcept;
  clsWorkingFile& operator=(clsWorkingFile&& other) noexcept;
  ~clsWorkingFile();

  bool IsSet() const { return !sPrivate_.empty(); }
  const std::string& PublicPath() const { return sPublic_; }
  const std::string& PrivatePath() const { return sPrivate_; }
  /// The private file takes the public name; where that fails it goes.
  void Publish();

 private:
  void Remove() noexcept;

  std::string sPublic_, sPrivate_;
  std::string sHostPath_;  ///< Of the private file, so that removing it asks for no memory
};

}  // namespace quillon
