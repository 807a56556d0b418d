// The parts of XML text that are no elements.
#pragma once

namespace ondrel::platform {

/// What XML text has beside its elements and its XML declaration.
enum class XmlPassage {
  text,          ///< Characters that are not blanks alone, in CDATA sections too.
  comment,       ///< Comments and instructions count outside a document type alone.
  instruction,   ///< A processing instruction.
  documentType,  ///< With all that stands in it.
};

}  // namespace ondrel::platform
