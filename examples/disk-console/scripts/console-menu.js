// Menu of the console's root and of the groups below it.

function BuildMenu(menu) {
  menu.Add("Refresh", "OnRefresh");
  menu.Add("Check All Volumes Now", "OnCheckVolumes");
  menu.AddSeparator();
  menu.Add("Thresholds...", "OnThresholds");
}

function OnRefresh() {
  Console.Refresh();
}

function OnCheckVolumes() {
  var found = CheckVolumes(Console.Server);  // watch.js
  if (found.length === 0) {
    Console.SetStatus("All volumes of " + Console.Server + " have enough free space.");
  } else {
    Console.SetStatus(found.join("; "));
  }
}

function OnThresholds() {
  Console.ShowNode("Thresholds");
}
