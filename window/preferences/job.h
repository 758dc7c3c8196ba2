// The job to print: a PDF of the user's, or the sample.
#pragma once

#include "window/language/texts.h"

#include <QString>
#include <QTemporaryDir>

#include <filesystem>

namespace Window {

class Job {
 public:
  // Without a document, the sample job.
  explicit Job(std::filesystem::path givenDocument) : document(std::move(givenDocument)) {}

  // Writes the sample if it is the job. Throws std::runtime_error: one sentence.
  void prepare();

  const std::filesystem::path& file() const { return document; }
  void replaceBy(const std::filesystem::path& file) { document = file; }

  // The displayed name, and the name of files made of the job, without an extension.
  QString name(const Texts& texts) const;
  QString stem(const Texts& texts) const;

  // Where file dialogs start: the job's folder, or for the sample the user's documents.
  QString folder() const;

 private:
  bool isSample() const;

  std::filesystem::path document;
  QTemporaryDir sampleFolder;
};

}  // namespace Window
