// Looks at the server's volumes from time to time and marks the nodes that need attention. Uses thresholds.js.

function OnStart() {
  OnTimer();
}

function OnTimer() {
  var found = CheckVolumes(Console.Server);
  Console.MarkNode("Low Space", found.length !== 0);
  if (found.length !== 0) Console.SetStatus(found[0] + (found.length > 1 ? " (and " + (found.length - 1) + " more)" : ""));
  Console.CallAfter(Threshold("RefreshInterval"), "OnTimer");
}

// A sentence for every volume with too little room, the fullest first.
function CheckVolumes(server) {
  var service = GetObject("winmgmts:\\\\" + server + "\\root\\cimv2");
  var query = "SELECT Name, Capacity, FreeSpace FROM Win32_Volume WHERE DriveType = 3 AND Capacity > 0";
  var tight = [];
  for (var volumes = new Enumerator(service.ExecQuery(query)); !volumes.atEnd(); volumes.moveNext()) {
    var volume = volumes.item();
    // 64-bit numbers arrive as text.
    var free = 100 * Number(volume.FreeSpace) / Number(volume.Capacity);
    if (free < Threshold("LowSpace")) tight.push({ name: volume.Name, free: free, bytes: Number(volume.FreeSpace) });
  }
  tight.sort(function (left, right) { return left.free - right.free; });
  var sentences = [];
  for (var index = 0; index < tight.length; ++index) {
    var urgency = tight[index].free < Threshold("CriticalSpace") ? "is nearly full" : "runs low";
    sentences.push(tight[index].name + " " + urgency + ": " + FormatBytes(tight[index].bytes) + " free");
  }
  return sentences;
}

function FormatBytes(bytes) {
  var units = ["bytes", "KB", "MB", "GB", "TB", "PB"];
  var unit = 0;
  while (bytes >= 1024 && unit < units.length - 1) {
    bytes /= 1024;
    ++unit;
  }
  return (unit === 0 || bytes >= 100 ? Math.round(bytes) : bytes.toFixed(1)) + " " + units[unit];
}
