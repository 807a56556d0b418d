// The limits beyond which the console warns, and the dialog in which they are changed.

// Free space in percent, temperature in degrees Celsius, queue length in waiting requests for each disk, interval in
// seconds.
var DEFAULT_THRESHOLDS = {
  LowSpace: 15,
  CriticalSpace: 5,
  HighTemperature: 55,
  LongQueue: 2,
  RefreshInterval: 300
};

var SMALLEST_INTERVAL = 30;

function Threshold(name) {
  var value = Number(Console.Setting(name));
  return value > 0 ? value : DEFAULT_THRESHOLDS[name];
}

// Called with the dialog's fields when it opens.
function OnOpen(fields) {
  for (var name in DEFAULT_THRESHOLDS) {
    if (fields.Has(name)) fields.Set(name, Threshold(name));
  }
}

// Called when the dialog is to close with its values kept. A text that is returned is shown, and the dialog stays.
function OnAccept(fields) {
  var accepted = {};
  for (var name in DEFAULT_THRESHOLDS) {
    if (!fields.Has(name)) continue;
    var value = Number(fields.Get(name));
    if (!(value > 0)) return "Every limit is a number above 0.";
    accepted[name] = value;
  }
  var low = accepted.LowSpace || Threshold("LowSpace");
  var critical = accepted.CriticalSpace || Threshold("CriticalSpace");
  if (low > 100) return "Free space is a share of 100 percent at most.";
  if (critical >= low) return "The critical limit lies below the one for low space.";
  if (accepted.RefreshInterval < SMALLEST_INTERVAL) {
    return "The disks are not asked more often than every " + SMALLEST_INTERVAL + " seconds.";
  }
  for (var kept in accepted) Console.SetSetting(kept, accepted[kept]);
  return "";
}
