// Menu of the volumes: the selected row is an instance of Win32_Volume.

var CHECK_RESULTS = [
  "The volume is in order.",
  "Errors were found and repaired.",
  "The volume will be checked when the server starts again.",
  "Errors were found and could not be repaired.",
  "The volume was not checked: it is in use.",
  "The file system cannot be checked."
];

function BuildMenu(menu) {
  var volume = Console.Selection;
  menu.Add("Refresh", "OnRefresh");
  if (volume === null) return;
  var isLocal = Number(volume.Value("DriveType")) === 3;
  menu.AddSeparator();
  menu.Add("Check for Errors", "OnCheck", isLocal);
  menu.Add("Analyse Fragmentation", "OnAnalyse", isLocal && volume.Value("FileSystem") === "NTFS");
  menu.AddSeparator();
  menu.Add("Properties", "OnProperties");
}

function OnRefresh() {
  Console.Refresh();
}

function SelectedVolume() {
  var service = GetObject("winmgmts:\\\\" + Console.Server + "\\root\\cimv2");
  // Device identifiers hold backslashes, which are doubled inside a key.
  var key = Console.Selection.Value("DeviceID").replace(/\\/g, "\\\\");
  return service.Get("Win32_Volume.DeviceID=\"" + key + "\"");
}

// A reading check: nothing on the volume is changed and it stays mounted.
function OnCheck() {
  var result = SelectedVolume().Chkdsk(false, true, true, false, false, false);
  Console.ShowDialog("Check Results", Console.Selection, CHECK_RESULTS[result] || "Error " + result + ".");
}

function OnAnalyse() {
  var method = SelectedVolume().ExecMethod_("DefragAnalysis");
  if (method.ReturnValue !== 0) {
    Console.SetStatus("The volume was not analysed: error " + method.ReturnValue + ".");
    return;
  }
  var fragmented = method.DefragAnalysis.TotalPercentFragmentation;
  Console.SetStatus(fragmented + " % fragmented" + (method.DefragRecommended ? "; defragmenting is advised." : "."));
}

function OnProperties() {
  Console.ShowDialog("Volume Properties", Console.Selection);
}
