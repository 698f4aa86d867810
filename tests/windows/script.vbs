' What a script may do with the object: properties, optional arguments, arrays, lists, errors.
Dim link, people, accounts, failed
Set link = CreateObject("TWQBClient90.CTWQBBridge")
folder = WScript.Arguments(0)
link.ConnectString = "Provider=SQLITE;Data Source=" & folder & "\billing.db"
link.TWSettingsPath = folder & "\twqb.ini"
link.noprogressbar = True

Set people = link.GetCustomers
WScript.Echo "customers " & people.Count & ", with those that are inactive " & link.GetCustomers(True).Count
WScript.Echo "version " & link.QBHostVer & " " & link.QBCountry & " " & TypeName(link.NoProgressBar)
For i = 0 To people.Count - 1
  If people.GetAt(i).FullName.GetValue() = "Pioneer Dental (Pioneer)" Then Set pioneer = people.GetAt(i)
Next
WScript.Echo TypeName(pioneer.IsActive.GetValue) & " " & TypeName(pioneer.Balance.GetValue()) & " " & _
  TypeName(pioneer.TimeModified.GetValue) & " " & TypeName(pioneer.Name.GetValue) & " " & TypeName(pioneer.Sublevel.GetValue)
WScript.Echo "no middle name: " & (pioneer.MiddleName Is Nothing) & ", a fax: " & pioneer.Fax.GetValue
WScript.Echo "accounts " & link.GetQBAccounts(accounts) & ", rows " & UBound(accounts, 1) & ", columns " & _
  (UBound(accounts, 2) > 50) & ", " & TypeName(accounts(1, 0))
WScript.Echo "once more " & link.GetQBAccounts(accounts)
On Error Resume Next
x = pioneer.NoSuchField
WScript.Echo "no such field: " & Hex(Err.Number)
Err.Clear
Set x = people.GetAt(99999)
WScript.Echo "behind the last: " & Hex(Err.Number)
Err.Clear
x = link.IsJob()
WScript.Echo "too few arguments: " & Hex(Err.Number)
Err.Clear
x = link.SendDataToQB("no table")
WScript.Echo "wrong type: " & Hex(Err.Number)
Err.Clear
link.QBHostVer = 3
WScript.Echo "not to be set: " & (Err.Number <> 0)
Err.Clear
x = link.GetQBAccounts("no variable")
WScript.Echo "no array: " & (Err.Number <> 0)
