<?xml version="1.0" encoding="utf-8"?>
<!-- A dialog: the chosen row's properties to read, and the settings, where the dialog has any, to change. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="utf-8" indent="yes"/>

  <xsl:template match="/Results">
    <html>
      <head>
        <title><xsl:value-of select="@Dialog"/></title>
        <style type="text/css">
          body { font: 9pt "Segoe UI", Tahoma, sans-serif; margin: 12px; background: #f0f0f0; }
          fieldset { margin-bottom: 12px; }
          label, th { display: inline-block; width: 180px; text-align: left; font-weight: normal; }
          input { width: 80px; text-align: right; }
          p.message { padding: 8px; background: #ffffff; border: 1px solid #90a4ae; }
        </style>
      </head>
      <body>
        <xsl:if test="@Message"><p class="message"><xsl:value-of select="@Message"/></p></xsl:if>
        <xsl:apply-templates select="Query/Row[1]"/>
        <xsl:if test="Setting">
          <fieldset>
            <legend>Limits</legend>
            <xsl:apply-templates select="Setting"/>
          </fieldset>
        </xsl:if>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="Row">
    <fieldset>
      <legend><xsl:value-of select="Value[1]"/></legend>
      <table>
        <xsl:for-each select="Value">
          <tr>
            <th><xsl:value-of select="../../Column[@Property = current()/@Property]/@Title"/></th>
            <td><xsl:value-of select="."/></td>
          </tr>
        </xsl:for-each>
      </table>
    </fieldset>
  </xsl:template>

  <xsl:template match="Setting">
    <div>
      <label for="{@Name}"><xsl:value-of select="@Title"/></label>
      <input type="text" id="{@Name}" name="{@Name}" value="{.}"/>
      <xsl:text> </xsl:text>
      <xsl:value-of select="@Unit"/>
    </div>
  </xsl:template>
</xsl:stylesheet>
