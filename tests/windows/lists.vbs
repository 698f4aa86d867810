' Lists of QuickBooks as a host reads them, walked when the object that gave them has gone; and whose object they are.
Set link = CreateObject("TWQBClient90.CTWQBBridge")
folder = WScript.Arguments(0)
link.ConnectString = "Provider=SQLITE;Data Source=" & folder & "\billing.db"
link.TWSettingsPath = folder & "\twqb.ini"
Set people = link.GetCustomers(True)
Set accounts = link.GetAccounts
Set activities = link.GetActivities(True)
Set classes = link.GetClassItems
Set invoices = link.GetInvoices
Set hours = link.GetTimeEntries
Set link = Nothing
Tell "customers", people, "FullName"
Tell "accounts", accounts, "FullName"
Tell "activities", activities, "FullName"
Tell "classes", classes, "FullName"
Tell "invoices", invoices, "TxnID"
Tell "entries", hours, "Duration"

Sub Tell(name, list, field)
  Dim i, record, isDouble, whose, h, m, s, negative
  isDouble = False
  On Error Resume Next
  isDouble = list.IsDouble
  On Error Goto 0
  whose = "TWQBClient90"
  If isDouble Then whose = "session library"
  WScript.Echo list.Count & " " & name & " of " & whose
  For i = 0 To list.Count - 1
    Set record = list.GetAt(i)
    If field = "TxnID" Then WScript.Echo record.RefNumber.GetValue & " " & record.Subtotal.GetValue
    If field = "Duration" Then
      record.Duration.GetValue h, m, s, negative
      WScript.Echo record.TxnDate.GetValue & " " & h & ":" & m & ":" & s & " " & negative
    End If
    If field = "FullName" Then WScript.Echo record.FullName.GetValue & " " & record.TimeModified.GetValue
  Next
End Sub
