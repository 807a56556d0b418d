// Menu of the physical disks: the selected row is an instance of Win32_DiskDrive.

function BuildMenu(menu) {
  var disk = Console.Selection;
  menu.Add("Refresh", "OnRefresh");
  if (disk === null) return;
  menu.AddSeparator();
  menu.Add("Rescan Partitions", "OnRescan");
  menu.Add("Copy Serial Number", "OnCopySerialNumber", disk.Value("SerialNumber") !== "");
  menu.AddSeparator();
  menu.Add("Properties", "OnProperties");
}

function OnRefresh() {
  Console.Refresh();
}

// Asks the storage service to read the partition table again, after a disk was grown or moved from another server.
function OnRescan() {
  var service = GetObject("winmgmts:\\\\" + Console.Server + "\\root\\Microsoft\\Windows\\Storage");
  var index = Number(Console.Selection.Value("Index"));
  var disks = new Enumerator(service.ExecQuery("SELECT * FROM MSFT_Disk WHERE Number = " + index));
  if (disks.atEnd()) {
    Console.SetStatus("Disk " + index + " is no longer there.");
    return;
  }
  var status = disks.item().Refresh();
  Console.SetStatus(status === 0 ? "Disk " + index + " was read again." : "Disk " + index + ": error " + status + ".");
  Console.Refresh();
}

function OnCopySerialNumber() {
  // Disks report their serial number padded with blanks.
  Console.Copy(Console.Selection.Value("SerialNumber").replace(/^\s+|\s+$/g, ""));
}

function OnProperties() {
  Console.ShowDialog("Disk Properties", Console.Selection);
}
