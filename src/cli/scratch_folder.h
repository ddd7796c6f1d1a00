#pragma once
// Copies of some files of a program folder in a temporary folder of the
// same layout. A command that only reads lets the core do what it always
// does on the copies (the day's count stamps the settings and writes the
// directory table; reading the settings creates a missing file), so that
// the numbers are the program's and the program folder stays as it is.

#include <QStringList>
#include <QTemporaryDir>

#include "platform/env.h"

namespace mj::cli {

class ScratchFolder {
 public:
  // Copies each file of `files` (suffixes such as \dbf\33ok.mmd) that
  // exists in env's folder; `required` ones must exist.
  ScratchFolder(const Env& env, const QStringList& files, const QStringList& required = {});
  // The one-line reason when the copy could not be made; empty when it was.
  const QString& problem() const { return problem_; }
  // An Env over the copy, with env's services.
  const Env& env() const { return env_; }

 private:
  QTemporaryDir dir_;
  Env env_;
  QString problem_;
};

}  // namespace mj::cli
