// Programs of random edits: bytes say what is done to a set and to the plain telling of its rules, step by step, and
// whatever the two answer must be the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/model/plain_disk.h"
#include "support/model/plain_set.h"

namespace ondrel::test {

class EditProgram {
 public:
  /// The disk stays, as the last program left it; a new program has its changing file good.
  EditProgram(std::span<const std::uint8_t> bytes, PlainDisk& disk);

  /// Runs until the bytes are used up, or a bound of steps is met. Raises std::logic_error that names the step, the
  /// operation, what was expected and what came instead.
  void Run();

  /// How often each operation had which outcome, as "RemoveNode: 0x800710D3". Successes and answers are one outcome.
  const std::map<std::string, int>& Outcomes() const { return m_outcomes; }

 private:
  struct Operation {
    const char* name;
    void (EditProgram::*run)();
  };
  static const Operation kOperations[];

  // What the bytes say. Past their end all are 0.
  int Number(int below);  ///< From one byte; `below` is 256 at most.
  std::size_t Position(std::size_t below);
  __int64 ObjectCookie();
  __int64 FileCookie();
  __int64 OneOf(const std::list<__int64>& cookies);  ///< 0 when there is none.
  PlainText Name();
  int Type();
  PlainQueries Queries();
  /// A record that mostly has the cookie that it is filed under.
  PlainRecord Record(__int64 cookie);
  PlainTransform Transform();
  HandIcon Icon();
  PlainText PathFrom(const std::vector<PlainText>& paths);

  // Comparing
  /// Notes an argument for the message of a difference.
  template <class Value>
  Value Told(Value value);
  void Expect(const std::string& expected, const std::string& got);
  void ExpectStatus(HRESULT expected, HRESULT got);
  void ExpectCookies(const std::list<__int64>& expected, const std::list<__int64>& got);
  /// Runs both and compares what they raise. Whether they raised nothing.
  bool BothEnd(const std::function<void()>& plain, const std::function<void()>& real);
  void Note(const std::string& outcome) { ++m_outcomes[m_operation + ": " + outcome]; }
  void CompareWhole(CMMCObjectSet& set, const PlainSet& plain);

  // Nodes and dialogs
  void AddNewNode();
  void AddNode();
  void RemoveNode();
  void MoveNodeDown();
  void AddNewDialog();
  void AddDialog();
  void RemoveDialog();
  void GetDialog();
  void GetDialogs();
  void GetChildNodes();
  void GetParams();
  void ChangeInPlace();
  void SetParams();
  void SetModifiedFlag();
  void Initialise();

  // Files
  void AddCodeFile();
  void AddIconFile();
  void InsertCodeFile();
  void InsertCodeContents();
  void InsertIconFile();
  void InsertIcon();
  void GenerateFileCookie();
  void GetCodeFiles();
  void GetIconFiles();
  void GetCodeFileContents();
  void GetFilePath();
  void GetIconFile();
  void GetIconFileImage();
  void GetIconImageList();
  void GetIconBitmapImages();
  void ChangeDisk();

  // Persistent forms
  void StoreCodeFile();
  void StoreIconFile();
  void LoadCodeFile();
  void LoadIconFile();
  void StoreWhereOneLoads();
  void ReloadImage();
  void LoadDamagedImage();
  void ReloadProject();
  void LoadCutProject();
  /// The image of both sets; none when both refuse to store it.
  std::optional<std::string> StoredImage();
  /// Goes on with an empty set, or with the one that there is.
  void ChooseTarget();

  std::span<const std::uint8_t> m_bytes;
  PlainDisk& m_disk;
  std::unique_ptr<CMMCObjectSet> m_set;
  PlainSet m_plain;
  CImageList m_list;
  int m_listed = 0;
  int m_projectLoads = 0;
  int m_step = 0;
  std::string m_operation;
  std::string m_arguments;
  std::map<std::string, int> m_outcomes;
};

}  // namespace ondrel::test
