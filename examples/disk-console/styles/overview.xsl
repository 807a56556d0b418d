<?xml version="1.0" encoding="utf-8"?>
<!-- Every query's results as a table. Volumes with little room and disks that are not well stand out. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="utf-8" indent="yes"/>

  <xsl:variable name="lowSpacePercent" select="15"/>

  <xsl:template match="/Results">
    <html>
      <head>
        <title><xsl:value-of select="@Server"/></title>
        <style type="text/css">
          body { font: 10pt "Segoe UI", Tahoma, sans-serif; margin: 16px; color: #263238; }
          table { border-collapse: collapse; margin-bottom: 20px; }
          th { text-align: left; border-bottom: 2px solid #90a4ae; padding: 4px 12px 4px 4px; }
          td { border-bottom: 1px solid #cfd8dc; padding: 4px 12px 4px 4px; }
          td.number { text-align: right; }
          tr.attention td { background: #fff3c4; }
        </style>
      </head>
      <body>
        <h1><xsl:value-of select="@Server"/></h1>
        <xsl:apply-templates select="Query"/>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="Query">
    <h2><xsl:value-of select="@Tag"/></h2>
    <xsl:choose>
      <xsl:when test="Row">
        <table>
          <tr>
            <xsl:for-each select="Column">
              <th><xsl:value-of select="@Title"/></th>
            </xsl:for-each>
          </tr>
          <xsl:apply-templates select="Row"/>
        </table>
      </xsl:when>
      <xsl:otherwise>
        <p>Nothing to show.</p>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="Row">
    <xsl:variable name="row" select="."/>
    <tr>
      <xsl:if test="Value[@Property = 'FreeSpace'] * 100 &lt; Value[@Property = 'Capacity'] * $lowSpacePercent
                    or Value[@Property = 'HealthStatus'] &gt; 0
                    or (Value[@Property = 'Status'] and Value[@Property = 'Status'] != 'OK')">
        <xsl:attribute name="class">attention</xsl:attribute>
      </xsl:if>
      <xsl:for-each select="../Column">
        <td>
          <xsl:if test="@Format"><xsl:attribute name="class">number</xsl:attribute></xsl:if>
          <xsl:call-template name="formatted">
            <xsl:with-param name="value" select="$row/Value[@Property = current()/@Property]"/>
            <xsl:with-param name="format" select="@Format"/>
          </xsl:call-template>
        </td>
      </xsl:for-each>
    </tr>
  </xsl:template>

  <xsl:template name="formatted">
    <xsl:param name="value"/>
    <xsl:param name="format"/>
    <xsl:choose>
      <xsl:when test="$format = 'bytes' and $value &gt;= 1099511627776">
        <xsl:value-of select="format-number($value div 1099511627776, '#,##0.0')"/> TB
      </xsl:when>
      <xsl:when test="$format = 'bytes' and $value &gt;= 1073741824">
        <xsl:value-of select="format-number($value div 1073741824, '#,##0.0')"/> GB
      </xsl:when>
      <xsl:when test="$format = 'bytes'">
        <xsl:value-of select="format-number($value div 1048576, '#,##0.0')"/> MB
      </xsl:when>
      <xsl:when test="$format = 'percent'"><xsl:value-of select="$value"/> %</xsl:when>
      <xsl:otherwise><xsl:value-of select="$value"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
