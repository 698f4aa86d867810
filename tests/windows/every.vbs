' Every property and operation by its name, as scripts reach them.
Set link = CreateObject("TWQBClient90.CTWQBBridge")
folder = WScript.Arguments(0)
link.ConnectString = "Provider=SQLITE;Data Source=" & folder & "\billing.db"
link.TWSettingsPath = folder & "\twqb.ini"
WScript.Echo "paths " & (link.ConnectString = "Provider=SQLITE;Data Source=" & folder & "\billing.db") & " " & _
  (link.TWSettingsPath = folder & "\twqb.ini")
link.LeaveMsgBoxOpen = True
link.IsSilentMode = True
link.NoProgressBar = True
link.IsQBSingleMode = True
link.UseTWSTable = True
link.IsSync = True
link.UsePreferencesTW = True
WScript.Echo "set " & link.LeaveMsgBoxOpen & " " & link.IsSilentMode & " " & link.NoProgressBar & " " & _
  link.IsQBSingleMode & " " & link.UseTWSTable & " " & link.IsSync & " " & link.UsePreferencesTW
link.LeaveMsgBoxOpen = False
link.IsSilentMode = False
link.IsQBSingleMode = False
link.UseTWSTable = False
link.IsSync = False
WScript.Echo "put back " & link.LeaveMsgBoxOpen & " " & link.IsSilentMode & " " & link.IsQBSingleMode & " " & _
  link.UseTWSTable & " " & link.IsSync
link.HelpID = 4711
link.HelpFilePath = "C:\firm\link.hlp"
link.NewQBLinkID = "new"
link.PassedID = "passed"
WScript.Echo "texts " & link.HelpID & " " & link.HelpFilePath & " " & link.NewQBLinkID & " " & link.PassedID

WScript.Echo "ConnectToQB " & link.ConnectToQB(True) & " " & link.QBHostVer & " " & link.QBCountry
WScript.Echo "QBDB " & (LCase(link.QBDB) = LCase(folder & "\company.twq"))
WScript.Echo "SendDataToQB " & link.SendDataToQB(1)
WScript.Echo "GetDataFromQB " & link.GetDataFromQB(1)
WScript.Echo "IsJob " & link.IsJob("NONE")
WScript.Echo "DeleteTWRecord " & link.DeleteTWRecord(2, "NONE")
WScript.Echo "DeleteQBRecord " & link.DeleteQBRecord(2, "NONE")
WScript.Echo "SubscribeToQBEvents " & link.SubscribeToQBEvents(True) & " " & link.IsSubscribedToQBEvents
WScript.Echo "and taken back " & link.SubscribeToQBEvents(False) & " " & link.IsSubscribedToQBEvents
WScript.Echo "SaveSettings " & link.SaveSettings("Income", "Expense", "Fees", "Costs")
link.DisplaySettings
link.CloseProgressScreen
Tell "GetAccounts", link.GetAccounts
Tell "GetEmployees", link.GetEmployees
Tell "GetCustomers", link.GetCustomers
Tell "GetVendors", link.GetVendors
Tell "GetInvoices", link.GetInvoices
Tell "GetPayments", link.GetPayments
Tell "GetExpCodes", link.GetExpCodes
Tell "GetActivities", link.GetActivities
Tell "GetTimeEntries", link.GetTimeEntries
Tell "GetChecks", link.GetChecks
Tell "GetBills", link.GetBills
Tell "GetClassItems", link.GetClassItems
Tell "GetPayrollItems", link.GetPayrollItems
WScript.Echo "GetQBAccounts " & link.GetQBAccounts(accounts) & " " & UBound(accounts, 1)

' Of an empty list NoRecsInQBTable tells that it is one.
Sub Tell(name, list)
  If list Is Nothing Then
    WScript.Echo name & " nothing " & link.NoRecsInQBTable
  Else
    WScript.Echo name & " " & (list.Count > 0) & " " & link.NoRecsInQBTable
  End If
End Sub
