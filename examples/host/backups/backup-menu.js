// The context menu of "Backups": what BuildMenu adds is what the console shows.

function BuildMenu(menu) {
  menu.Add("Back up now", "StartBackup", true);
}

function StartBackup() {
  Console.SetStatus("Backing up " + Console.Server);
}
