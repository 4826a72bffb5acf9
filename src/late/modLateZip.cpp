// The functions of libzip that are used, each handed on to the library.

#include <zip.h>

#include "clsLateLibrary.h"

namespace {

quillon::clsLateLibrary& Library() {
  static quillon::clsLateLibrary library(QUILLON_LIBZIP);
  return library;
}

}  // namespace

extern "C" {

zip_t* zip_open(const char* pPath, int nFlags, int* pError) {
  static auto* const pCall = Library().Find<decltype(zip_open)>("zip_open");
  return pCall(pPath, nFlags, pError);
}
zip_t* zip_fdopen(int nHandle, int nFlags, int* pError) {
  static auto* const pCall = Library().Find<decltype(zip_fdopen)>("zip_fdopen");
  return pCall(nHandle, nFlags, pError);
}
void zip_discard(zip_t* pArchive) {
  static auto* const pCall = Library().Find<decltype(zip_discard)>("zip_discard");
  pCall(pArchive);
}
zip_error_t* zip_get_error(zip_t* pArchive) {
  static auto* const pCall = Library().Find<decltype(zip_get_error)>("zip_get_error");
  return pCall(pArchive);
}
int zip_error_code_zip(const zip_error_t* pError) {
  static auto* const pCall = Library().Find<decltype(zip_error_code_zip)>("zip_error_code_zip");
  return pCall(pError);
}
zip_int64_t zip_get_num_entries(zip_t* pArchive, zip_flags_t nFlags) {
  static auto* const pCall = Library().Find<decltype(zip_get_num_entries)>("zip_get_num_entries");
  return pCall(pArchive, nFlags);
}
const char* zip_get_name(zip_t* pArchive, zip_uint64_t nEntry, zip_flags_t nFlags) {
  static auto* const pCall = Library().Find<decltype(zip_get_name)>("zip_get_name");
  return pCall(pArchive, nEntry, nFlags);
}
int zip_stat_index(zip_t* pArchive, zip_uint64_t nEntry, zip_flags_t nFlags, zip_stat_t* pAbout) {
  static auto* const pCall = Library().Find<decltype(zip_stat_index)>("zip_stat_index");
  return pCall(pArchive, nEntry, nFlags, pAbout);
}
zip_file_t* zip_fopen_index(zip_t* pArchive, zip_uint64_t nEntry, zip_flags_t nFlags) {
  static auto* const pCall = Library().Find<decltype(zip_fopen_index)>("zip_fopen_index");
  return pCall(pArchive, nEntry, nFlags);
}
zip_int64_t zip_fread(zip_file_t* pFile, void* pBytes, zip_uint64_t nBytes) {
  static auto* const pCall = Library().Find<decltype(zip_fread)>("zip_fread");
  return pCall(pFile, pBytes, nBytes);
}
int zip_fclose(zip_file_t* pFile) {
  static auto* const pCall = Library().Find<decltype(zip_fclose)>("zip_fclose");
  return pCall(pFile);
}
const char* zip_libzip_version() {
  static auto* const pCall = Library().Find<decltype(zip_libzip_version)>("zip_libzip_version");
  return pCall();
}

}  // extern "C"
