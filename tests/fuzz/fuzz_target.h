#pragma once
// One fuzz target: a function that takes any bytes and must neither crash,
// hang nor do anything undefined with them.
//
//   MJ_FUZZ_TARGET(ini_file) {   // data, size: the bytes
//     ...
//     return 0;
//   }
//
// Built for libFuzzer (scripts/fuzz), the target is the program's
// LLVMFuzzerTestOneInput. In the normal test build every target is entered
// in a list by its name instead, and the GoogleTest of corpus_replay.cpp
// runs each one on every file of its corpus folder, corpus/<name>/.

#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>

namespace mj::fuzz {

using Target = int (*)(const uint8_t* data, size_t size);

// The targets of the program, by name.
std::map<QString, Target>& Targets();

inline bool Register(const char* name, Target target) {
  Targets()[QString::fromLatin1(name)] = target;
  return true;
}

// Text from bytes: GBK, as the program's files are read (any bytes decode).
QString GbkText(const uint8_t* data, size_t size);

// A folder of its own for the target's files, made once per process.
QString WorkFolder();

}  // namespace mj::fuzz

#ifdef MJ_LIBFUZZER
#define MJ_FUZZ_REGISTER(name, fn) \
  extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) { return fn(data, size); }
#else
#define MJ_FUZZ_REGISTER(name, fn) [[maybe_unused]] static const bool name##_registered = mj::fuzz::Register(#name, fn);
#endif

#define MJ_FUZZ_TARGET(name)                                           \
  static int name##_fuzz(const uint8_t* data, size_t size);            \
  MJ_FUZZ_REGISTER(name, name##_fuzz)                                  \
  static int name##_fuzz([[maybe_unused]] const uint8_t* data, [[maybe_unused]] size_t size)
