' A host of ten lines: sends and gets the firm in the folder that it is given.
Set link = CreateObject("TWQBClient90.CTWQBBridge")
folder = WScript.Arguments(0)
link.ConnectString = "Provider=SQLITE;Data Source=" & folder & "\billing.db"
link.TWSettingsPath = folder & "\twqb.ini"
link.UsePreferencesTW = True
Const enAll = 13
WScript.Echo "sent: " & link.SendDataToQB(enAll)
WScript.Echo "fetched: " & link.GetDataFromQB(enAll)
