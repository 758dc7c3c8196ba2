// The job to print: a PDF of the user's, or the sample.
#pragma once

#include "press/pdf/job_file.h"
#include "window/language/texts.h"

#include <QString>
#include <QTemporaryDir>

#include <utility>

namespace Window {

class Job {
 public:
  // Without a document, the sample job.
  explicit Job(Press::JobFile givenDocument) : document(std::move(givenDocument)) {}

  // Writes the sample if it is the job. Throws std::runtime_error: one sentence.
  void prepare();

  const Press::JobFile& file() const { return document; }
  void replaceBy(const Press::JobFile& file) { document = file; }

  // The displayed name, and the name of files made of the job, without an extension.
  QString name(const Texts& texts) const;
  QString stem(const Texts& texts) const;

  // Where file dialogs start: the job's folder, or for the sample the user's documents.
  QString folder() const;

 private:
  bool isSample() const;

  Press::JobFile document;
  QTemporaryDir sampleFolder;
};

}  // namespace Window
