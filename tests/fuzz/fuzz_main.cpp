// libFuzzer's start-up hook for the fuzz programs: a Qt application object
// for what needs one (text codecs, file info), made once before the first input.

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  static QCoreApplication app(*argc, *argv);
  return 0;
}
